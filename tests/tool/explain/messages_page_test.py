# SPDX-License-Identifier: MIT
"""The manual page of the messages is free of faults and prints all that `explain` says.

Usage: messages_page_test.py TOOL. Ends with 77 where mandoc is not installed.
"""

import json
import re
import shutil
import subprocess
import sys

TOOL = sys.argv[1]


def explain(*arguments):
    return subprocess.run([TOOL, "explain", "--lang", "en", *arguments], capture_output=True,
                          text=True, encoding="utf-8", check=True).stdout


def mandoc(page, *arguments):
    return subprocess.run(["mandoc", *arguments], input=page, capture_output=True, text=True,
                          encoding="utf-8", check=False)


def words(text):
    """The text without line breaks, overstrikes and the marks round code."""
    return " ".join(re.sub(".\b", "", text).replace("`", "").split())


def missing_texts(printed):
    """What the page should print and does not."""
    for summary in json.loads(explain("--format", "json"))["keys"]:
        message = json.loads(explain(summary["key"], "--format", "json"))["explanation"]
        texts = [f"{message['key']} ({message['kind']})", message["text"], *message["parameters"],
                 *message["meaning"].split("\n\n"), *message["advice"].split("\n\n")]
        for example in message["examples"]:
            texts += [example["caption"], example["remark"], example["text"]]
        yield from (f"{summary['key']}: {text}" for text in texts if words(text) not in printed)


def main():
    if shutil.which("mandoc") is None:
        print("mandoc is not installed")
        return 77
    page = explain("--format", "man")
    lint = mandoc(page, "-T", "lint", "-W", "warning")
    faults = [line for line in (lint.stdout + lint.stderr).splitlines() if line]
    printed = words(mandoc(page, "-T", "utf8", "-O", "width=1000").stdout)
    faults += missing_texts(printed)
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
