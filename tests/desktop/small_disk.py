"""Runs a program with a disk of 64 KiB at a folder: small_disk.py FOLDER PROGRAM [ARGUMENT...]. Only
the program sees the disk, which begins with copies of the folder's files."""

import os
import pathlib
import sys

from private_mounts import mount_disk


def main(folder, *command):
    folder = pathlib.Path(folder)
    files = {path: path.read_bytes() for path in folder.iterdir()}
    mount_disk(folder, b"64k")
    for path, contents in files.items():
        path.write_bytes(contents)
    os.execv(command[0], command)


if __name__ == "__main__":
    main(*sys.argv[1:])
