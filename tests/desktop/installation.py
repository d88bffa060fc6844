"""A copy of the program as it is installed, which a test may take files away from."""

import os
import pathlib
import shutil


class Installation:

    def __init__(self, prefix):
        """Copies the program to the folder `prefix`. All but the executable are links to files."""
        built = pathlib.Path(os.environ["QUILLMAR_PROGRAM"]).parent.parent
        self.prefix = prefix
        (prefix / "bin").mkdir(parents=True)
        # The program looks for the other files beside the place that links lead to.
        self.program = shutil.copy(built / "bin/quillmar", prefix / "bin")
        for folder in ("lib", "share"):
            shutil.copytree(built / folder, prefix / folder, copy_function=os.symlink)
        self.share = prefix / "share"
        self.module = prefix / "lib/quillmar/quillmar_qt.so"

    def use(self, test):
        """Makes this the program that the test starts."""
        test.use_program(self.program)
        return self
