#!/usr/bin/env python3
"""Writes platform_names.inc: a filter of all names that the headers of generated programs have.

    write_platform_names.py INCLUDE-FOLDER > platform_names.inc

INCLUDE-FOLDER is packaging/include. Needs the MinGW cross compiler and several minutes: the compiler
itself is asked which of the words in its headers are names. Upper-case words with an underscore are
left out, since the check takes all of those for constants of the system.
"""

import re
import subprocess
import sys

COMPILER = "x86_64-w64-mingw32-g++-posix"
HEADERS = ["windows.h", "string", "vector", "map", "sstream", "memory", "commctrl.h", "iostream",
           "fstream", "cmath", "cstdlib", "ctime", "filesystem", "cstdio", "algorithm"]
BITS_PER_NAME = 14
HASHES = 9
DIGITS_PER_LINE = 96


def preprocess(folder, *options):
    source = "".join(f"#include <{header}>\n" for header in HEADERS)
    command = [COMPILER, "-std=c++17", f"-I{folder}", "-E", *options, "-x", "c++", "-"]
    return subprocess.run(command, input=source, capture_output=True, text=True,
                          errors="replace", check=True).stdout


def undeclared(folder, words):
    source = "".join(f"#include <{header}>\n" for header in HEADERS) + "using namespace std;\n"
    source += "".join(f"unsigned long long f{i}() {{ return sizeof({word}); }}\n"
                      for i, word in enumerate(words))
    command = [COMPILER, "-std=c++17", f"-I{folder}", "-fsyntax-only", "-w", "-fmax-errors=0",
               "-fno-diagnostics-show-caret", "-x", "c++", "-"]
    run = subprocess.run(command, input=source, capture_output=True, text=True,
                         env={"LC_ALL": "C", "PATH": "/usr/bin:/bin"})
    return set(re.findall(r"'(\w+)' was not declared in this scope", run.stderr))


def platform_names(folder):
    macros = set(re.findall(r"^#define (\w+)", preprocess(folder, "-dM"), re.M))
    text = re.sub(r'"(\\.|[^"\\\n])*"', '""', preprocess(folder, "-P"))
    words = {word for word in re.findall(r"\b[A-Za-z]\w*", text) if "__" not in word} - macros
    return (words - undeclared(folder, sorted(words))) | macros


def is_listed(name):
    return not name.startswith("_") and not ("_" in name and name.upper() == name)


def hash_of(name):
    value = 0xCBF29CE484222325
    for byte in name.encode():
        value = (value ^ byte) * 0x100000001B3 % 2**64
    return value


def write(names):
    bits = len(names) * BITS_PER_NAME // 4 * 4
    digits = [0] * (bits // 4)
    for name in names:
        value = hash_of(name)
        step = value >> 32 | 1
        for number in range(HASHES):
            bit = (value + number * step) % 2**64 % bits
            digits[bit // 4] |= 1 << bit % 4
    text = "".join(f"{digit:x}" for digit in digits)
    print(f"// {len(names)} names; written by write_platform_names.py.")
    for start in range(0, len(text), DIGITS_PER_LINE):
        print(f'"{text[start:start + DIGITS_PER_LINE]}"')


if __name__ == "__main__":
    write(sorted(filter(is_listed, platform_names(sys.argv[1]))))
