#!/usr/bin/env python3
"""Packs a folder into an archive whose bytes depend on nothing but the files in it.

    archive.py FOLDER ARCHIVE.zip|ARCHIVE.tar.gz

Everything lies below one folder named like the archive. Names are sorted, owners are 0, modes are 755
for folders and programs and 644 for the rest, and every time is SOURCE_DATE_EPOCH (seconds since 1970;
without it, a fixed day). ARCHIVE.sha256 is written beside it, in the form that sha256sum -c reads.
"""

import gzip
import hashlib
import os
import sys
import tarfile
import time
import zipfile

DEFAULT_TIME = 1700000000
KINDS = (".zip", ".tar.gz")


def files_of(folder):
    """(name in the folder, path) of all folders and files, a folder ahead of what is in it."""
    found = []
    for parent, folders, files in os.walk(folder):
        for name in folders + files:
            path = os.path.join(parent, name)
            if os.path.islink(path):
                sys.exit(f"archive.py: {path} is a symbolic link; not every system can unpack it")
            found.append((os.path.relpath(path, folder).replace(os.sep, "/"), path))
    return sorted(found)


def mode_of(path):
    return 0o755 if os.path.isdir(path) or os.access(path, os.X_OK) else 0o644


def write_zip(output, top, files, moment):
    date = time.gmtime(moment)[:6]
    with zipfile.ZipFile(output, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for name, path in files:
            is_folder = os.path.isdir(path)
            info = zipfile.ZipInfo(f"{top}/{name}{'/' if is_folder else ''}", date)
            info.create_system = 3  # the upper half of the attributes holds the mode
            info.external_attr = ((0o40000 if is_folder else 0o100000) | mode_of(path)) << 16
            info.compress_type = zipfile.ZIP_STORED if is_folder else zipfile.ZIP_DEFLATED
            if is_folder:
                info.external_attr |= 0x10
            content = b"" if is_folder else read(path)
            archive.writestr(info, content)


def write_tar(output, top, files, moment):
    with open(output, "wb") as raw:
        with gzip.GzipFile("", "wb", 9, raw, moment) as packed:
            with tarfile.open(fileobj=packed, mode="w", format=tarfile.PAX_FORMAT) as archive:
                for name, path in files:
                    add_to_tar(archive, f"{top}/{name}", path, moment)


def add_to_tar(archive, name, path, moment):
    info = tarfile.TarInfo(name)
    info.mtime = moment
    info.mode = mode_of(path)
    if os.path.isdir(path):
        info.type = tarfile.DIRTYPE
        archive.addfile(info)
        return
    info.size = os.path.getsize(path)
    with open(path, "rb") as content:
        archive.addfile(info, content)


def read(path):
    with open(path, "rb") as file:
        return file.read()


def main(folder, output):
    kind = next((kind for kind in KINDS if output.endswith(kind)), None)
    if kind is None:
        sys.exit(f"archive.py: {output} ends in none of {', '.join(KINDS)}")
    top = os.path.basename(output)[:-len(kind)]
    moment = int(os.environ.get("SOURCE_DATE_EPOCH") or DEFAULT_TIME)
    files = files_of(folder)
    if not files:
        sys.exit(f"archive.py: {folder} is empty")
    part = output + ".part"
    (write_zip if kind == ".zip" else write_tar)(part, top, files, moment)
    with open(output + ".sha256", "w", encoding="ascii") as sums:
        sums.write(f"{hashlib.sha256(read(part)).hexdigest()}  {os.path.basename(output)}\n")
    os.replace(part, output)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2])
