"""Runs a program that trusts a certificate authority of the test in place of those of the system:
trusted_authority.py FILE PROGRAM [ARGUMENT...]. No other program does."""

import os
import pathlib
import sys

from private_mounts import show_file_at

SYSTEM_AUTHORITIES = pathlib.Path("/etc/ssl/certs/ca-certificates.crt")


def main(file, *command):
    show_file_at(pathlib.Path(file), SYSTEM_AUTHORITIES)
    os.execv(command[0], command)


main(*sys.argv[1:])
