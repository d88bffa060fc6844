"""An X display beside that of the desktop."""

import os
import subprocess

from quillmar_desktop import DEADLINE_SECONDS


class Display:
    """An X display that the test starts and ends itself. A server that looks for a number itself
    counts from 0, and would soon take that of one which has just ended."""

    def __init__(self, ends_with_last_client=False):
        reading, writing = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", f":{1000 + os.getpid() % 5000}", "-displayfd", str(writing),
             "-screen", "0", "1280x800x24", "-nolisten", "tcp",
             "-terminate" if ends_with_last_client else "-noreset"],
            pass_fds=[writing], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL)
        os.close(writing)
        with open(reading, encoding="ascii") as answer:
            self.name = f":{answer.readline().strip()}"

    def end(self):
        self.server.terminate()
        self.server.wait(DEADLINE_SECONDS)

    def clipboard_text(self):
        reader = subprocess.run(["xclip", "-display", self.name, "-selection", "clipboard", "-out"],
                                capture_output=True, check=False, text=True,
                                timeout=DEADLINE_SECONDS)
        return reader.stdout if reader.returncode == 0 else None
