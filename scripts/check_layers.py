#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks that each folder includes only from itself and from the folders below it.

Also refused outside platform/: the environment, system switches, system headers and third-party
headers. The command-line tool and the tests may use third-party headers; what they need of the
system stands in a folder of its own there too. A few private headers are for their own folder alone,
as far as modules go.

Usage: check_layers.py ROOT. Prints each breach as FILE:LINE: TEXT and exits 1 when there is one.
"""

import re
import sys
from pathlib import Path

MODULES = ["platform", "trace", "context", "collector", "xml", "check"]
ALLOWED = {module: set(MODULES[: i + 1]) for i, module in enumerate(MODULES)}
# The one file that sees a folder above its own: creation runs the reader and the writer.
EXCEPTIONS = {("collector/Creation.cpp", "xml")}
# Private to its own folder, as far as modules go: the others have named operations for what they need.
OWN_HEADERS = {"collector/detail/CollectorInternals.h"}
# Programs round the library and what of its private headers they may include.
PROGRAMS = {"tools": False, "examples": False, "bench": True, "fuzz": True, "tests": True}

# Private headers that are complete in themselves, which the tool may include all the same: what they do
# must not be there twice.
SHARED_HEADERS = {"platform/detail/Utf8.h", "platform/detail/VisibleText.h",
                  "check/detail/StrongComponents.h"}

# Folders of programs that include from themselves alone.
CLOSED = ("tools/dyadctx/layout/",)

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
SYSTEM_SWITCH = re.compile(r"\b(_WIN32|_WIN64|__linux__|__unix__|__APPLE__)\b")
ENVIRONMENT = re.compile(r"\b(getenv|secure_getenv|setenv|putenv|_wgetenv|environ)\b")
SYSTEM_HEADERS = re.compile(
    r"^(windows\.h|shlobj\.h|unistd\.h|fcntl\.h|dirent\.h|dlfcn\.h|poll\.h|pwd\.h|spawn\.h|sys/.*|linux/.*)$",
    re.IGNORECASE)
THIRD_PARTY = re.compile(
    r"^(expat|toml\+\+|CLI|nlohmann|gtest|gmock|benchmark|libxml|pugixml|libintl)", re.IGNORECASE)
SYSTEM_FOLDERS = {"posix", "windows"}


def strip_comments(line):
    return re.sub(r'"(?:[^"\\]|\\.)*"', '""', line.split("//")[0])


def include_breach(path, module, quoted, header):
    in_system_folder = bool(SYSTEM_FOLDERS & set(path.parts))
    if not quoted:
        if SYSTEM_HEADERS.match(header) and not in_system_folder:
            return f"system header <{header}> outside a posix/ or windows/ folder"
        if THIRD_PARTY.match(header) and module in MODULES and module != "platform":
            return f"third-party header <{header}> outside platform/"
        return None
    folder = header.split("/")[0]
    for closed in CLOSED:
        if path.as_posix().startswith(closed) and not header.startswith(closed) and header not in SHARED_HEADERS:
            return f'{closed} may not include "{header}"'
    if module in MODULES:
        if folder not in MODULES:
            return f'"{header}" is not written from the root'
        if header in OWN_HEADERS and folder != module:
            return f'{module}/ may not include "{header}" of {folder}/'
        if folder not in ALLOWED[module] and (path.as_posix(), folder) not in EXCEPTIONS:
            return f'{module}/ may not include "{header}"'
    elif folder in MODULES and "/detail/" in header and not PROGRAMS[module] and header not in SHARED_HEADERS:
        return f'{module}/ may not include the private "{header}"'
    return None


def line_breach(path, module, line):
    match = INCLUDE.match(line)
    if match:
        return include_breach(path, module, match.group(1) == '"', match.group(2))
    if module == "platform" or SYSTEM_FOLDERS & set(path.parts):
        return None
    code = strip_comments(line)
    found = SYSTEM_SWITCH.search(code) or (module in MODULES and ENVIRONMENT.search(code))
    return f"{found.group(0)} outside platform/" if found else None


def sources(root):
    for module in MODULES + list(PROGRAMS):
        for path in sorted((root / module).rglob("*")):
            if path.suffix in {".h", ".cpp"} and path.is_file():
                yield module, path


def main():
    root = Path(sys.argv[1])
    breaches = 0
    for module, path in sources(root):
        relative = path.relative_to(root)
        text = path.read_text(encoding="utf-8")
        for number, line in enumerate(text.splitlines(), start=1):
            breach = line_breach(relative, module, line)
            if breach:
                print(f"{relative}:{number}: {breach}")
                breaches += 1
    return 1 if breaches else 0


if __name__ == "__main__":
    sys.exit(main())
