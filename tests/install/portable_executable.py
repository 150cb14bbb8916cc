"""What a Windows executable asks for, read from the file itself.

    imported_libraries("app.exe")    # {"kernel32.dll", "user32.dll"}
"""

import re
import subprocess

# What every Windows since 10 has in its system folder.
SYSTEM_LIBRARIES = {f"{name}.dll" for name in
                    ("kernel32", "user32", "gdi32", "comctl32", "comdlg32", "shell32", "advapi32",
                     "msvcrt")}


def imported_libraries(path):
    """The names in lower case; fails for a file that is no complete executable."""
    output = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", path], stdout=subprocess.PIPE,
                            stderr=subprocess.PIPE, text=True, errors="replace", check=True)
    if output.stderr.strip():
        raise AssertionError(f"{path}: {output.stderr}")
    found = {name.lower() for name in re.findall(r"^\s*DLL Name: (.*\S)\s*$", output.stdout, re.M)}
    if not found:
        raise AssertionError(f"{path}: imports nothing at all, not even the system")
    check_sections(path)
    return found


def check_sections(path):
    """Every section lies within the file: a cut one has its last sections behind the end."""
    with open(path, "rb") as file:
        content = file.read()
    start = int.from_bytes(content[0x3C:0x40], "little")
    if content[:2] != b"MZ" or content[start:start + 4] != b"PE\0\0":
        raise AssertionError(f"{path}: no Windows executable")
    count = int.from_bytes(content[start + 6:start + 8], "little")
    first = start + 24 + int.from_bytes(content[start + 20:start + 22], "little")
    for number in range(count):
        header = content[first + 40 * number:first + 40 * (number + 1)]
        end = int.from_bytes(header[16:20], "little") + int.from_bytes(header[20:24], "little")
        if end > len(content):
            raise AssertionError(f"{path}: cut at {len(content)} bytes")
