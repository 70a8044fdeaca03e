# SPDX-License-Identifier: MIT
"""Plants files and functions that are too long and looks for the complaint about each."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SCRIPT = sys.argv.pop(1)


def check(text):
    with tempfile.TemporaryDirectory() as folder:
        (Path(folder) / "A.cpp").write_text(text, encoding="utf-8")
        return subprocess.run([sys.executable, SCRIPT, folder], capture_output=True, text=True,
                              check=False)


def function(lines, indentation=""):
    body = [f"{indentation}void Step() {{"] + [f"{indentation}    Work();"] * (lines - 2)
    return "\n".join(body + [f"{indentation}}}"]) + "\n"


class CheckSizes(unittest.TestCase):
    def test_the_longest_allowed_file_and_function_pass(self):
        text = function(60) + "namespace a {\n" + "int x;\n" * 438 + "}\n"
        run = check(text)
        self.assertEqual((run.returncode, run.stdout), (0, ""))

    def test_a_longer_function_is_reported(self):
        run = check("int a;\n" + function(61))
        self.assertEqual((run.returncode, run.stdout),
                         (1, "A.cpp:2: a block of 61 lines, at most 60\n"))

    def test_a_longer_function_in_a_class_is_reported(self):
        run = check("class A {\n" + function(61, "    ") + "};\n")
        self.assertEqual((run.returncode, run.stdout),
                         (1, "A.cpp:2: a block of 61 lines, at most 60\n"))

    def test_the_lines_of_a_signature_count(self):
        text = "void Step(int first,\n          int second) {\n" + "    Work();\n" * 58 + "}\n"
        run = check(text)
        self.assertEqual((run.returncode, run.stdout),
                         (1, "A.cpp:1: a block of 61 lines, at most 60\n"))

    def test_a_longer_file_is_reported(self):
        run = check("int x;\n" * 501)
        self.assertEqual((run.returncode, run.stdout), (1, "A.cpp:1: 501 lines, at most 500\n"))


if __name__ == "__main__":
    unittest.main()
