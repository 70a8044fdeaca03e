# SPDX-License-Identifier: MIT
"""Help and manual pages: that they agree, that nothing is missing, that their examples work.

Usage: manual_test.py TOOL SOURCE_DIR BUILD_DIR
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

BUILD = Path(sys.argv.pop())
SOURCE = Path(sys.argv.pop())
TOOL = Path(sys.argv.pop()).resolve()
FRAME = SOURCE / "resources" / "man" / "dyadctx.1.in"
CONTEXT_PAGE = SOURCE / "resources" / "man" / "dyadctx-context.5"
COMMANDS = {"check", "explain", "list", "show", "which", "scenarios", "write", "diff", "graph", "settings",
            "schema", "completion"}


def answer(*arguments):
    run = subprocess.run([TOOL, *arguments], capture_output=True, text=True, check=False)
    if run.returncode != 0 or run.stderr:
        raise AssertionError((arguments, run.returncode, run.stderr))
    return run.stdout


def squeezed(text):
    return " ".join(text.split())


def rows(help_text, heading):
    """The rows of a section of the help: what stands on the left, and its meaning."""
    section = re.search(rf"^{heading}[^\n]*:\n((?:  .*\n)+)", help_text, re.MULTILINE)
    found = []
    for line in section.group(1).splitlines() if section else []:
        if line.startswith(" " * 26):
            found[-1][1] += " " + line.strip()
        else:
            label, _, meaning = line.strip().partition("  ")
            found.append([label, meaning.strip()])
    return [(label, meaning.strip()) for label, meaning in found]


def examples(help_text):
    section = re.search(r"^Examples:\n((?:  .*\n)+)", help_text, re.MULTILINE)
    return re.findall(r"^  (\S.*)$", section.group(1), re.MULTILINE) if section else []


def shown_commands(help_text):
    return [name for name, _ in rows(help_text, "Commands")]


def all_helps():
    """Each command (and each below one) with its help."""
    pending = [[name] for name in shown_commands(answer("--help"))]
    for path in pending:
        text = answer(*path, "--help")
        pending.extend([*path, name] for name in shown_commands(text))
        yield path, text


class Help(unittest.TestCase):
    def test_lists_the_commands_and_no_internal_one(self):
        listed = set(shown_commands(answer("--help")))
        self.assertLessEqual(COMMANDS, listed)
        self.assertNotIn("man-page", listed)

    def test_tells_each_exit_status(self):
        told = [int(status) for status, _ in rows(answer("--help"), "Exit status")]
        header = (SOURCE / "tools" / "dyadctx" / "ExitStatus.h").read_text(encoding="utf-8")
        self.assertEqual(told, [int(value) for value in re.findall(r"\w+ = (\d+)", header)])

    def test_no_line_is_too_wide(self):
        for path, text in [([], answer("--help")), *all_helps()]:
            for line in text.splitlines():
                # An example is not broken: it would not be one line to type any more.
                if not line.startswith(("      ", "  dyadctx")):
                    self.assertLessEqual(len(line), 84, (path, line))

    def test_each_option_and_value_has_a_meaning_and_stands_in_the_usage(self):
        for path, text in all_helps():
            usage = squeezed(text.split("\n\n")[0])
            for label, meaning in rows(text, "Options") + rows(text, "Arguments"):
                self.assertNotEqual(meaning, "", (path, label))
            # What stands below another command is in the usage of that one.
            for label, _ in rows(text, "Options") if len(path) == 1 else []:
                names = re.findall(r"--?[\w-]+", label)
                self.assertTrue(any(name in usage for name in names), (path, label, usage))

    def test_values_that_are_words_are_all_shown(self):
        text = answer("check", "--help")
        self.assertIn("--format text|json|sarif|github", text)
        self.assertIn("(default: error)", squeezed(text))

    def test_each_command_has_an_example_that_works(self):
        for path, text in [([], answer("--help")), *all_helps()]:
            lines = examples(text)
            self.assertTrue(lines or len(path) > 1, path)
            for line in lines:
                with self.subTest(line):
                    self.try_example(line)

    def try_example(self, line):
        with tempfile.TemporaryDirectory() as folder:
            shutil.copy(SOURCE / "examples" / "site.xml", folder)
            old = (SOURCE / "examples" / "site.xml").read_text(encoding="utf-8")
            (Path(folder) / "old.xml").write_text(old.replace("Released", "Old"), encoding="utf-8")
            (Path(folder) / "bin").mkdir()
            (Path(folder) / "bin" / "dyadctx").symlink_to(TOOL)
            environment = {"PATH": f"{folder}/bin:{os.environ['PATH']}", "HOME": folder,
                           "VELDyadCtxInit": "./site.xml", "VELDbContextEnvironment": "1",
                           "LC_ALL": "C.UTF-8"}
            shell = "fish" if "fish" in line else "bash"
            if shutil.which(shell) is None:
                self.skipTest(f"{shell} is not installed")
            run = subprocess.run([shell, "-c", line], cwd=folder, env=environment, timeout=60,
                                 capture_output=True, text=True, check=False)
            expected = 1 if " diff " in line or "--deep" in line else 0
            self.assertEqual(run.returncode, expected, run.stderr)
            self.assertNotIn("error:", run.stderr)


@unittest.skipUnless(shutil.which("mandoc"), "mandoc is not installed")
class Pages(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.page = Path(folder.name) / "dyadctx.1"
        self.page.write_text(answer("man-page", str(FRAME)), encoding="utf-8")

    def shown(self, page):
        run = subprocess.run(["mandoc", "-T", "utf8", "-O", "width=1000", page],
                             capture_output=True, text=True, check=True)
        # Bold is a letter, a step back and the letter again; underlined likewise.
        return squeezed(re.sub(r".\x08", "", run.stdout))

    def test_have_no_fault(self):
        for page in (self.page, CONTEXT_PAGE):
            run = subprocess.run(["mandoc", "-T", "lint", "-W", "warning", page],
                                 capture_output=True, text=True, check=False)
            self.assertEqual((run.stdout, run.returncode), ("", 0))

    def test_tell_what_the_help_tells(self):
        page = self.shown(self.page)
        self.assertNotIn("@", page)
        general = answer("--help")
        for heading in ("Common options", "Exit status", "Commands"):
            self.assertTrue(rows(general, heading), heading)
            for label, meaning in rows(general, heading):
                self.assert_told(page, label, meaning)
        for path, text in all_helps():
            usage = squeezed(text.split("\n\n")[0]).removeprefix("Usage: ")
            self.assertIn(usage, page)
            for heading in ("Options", "Arguments"):
                for label, meaning in rows(text, heading):
                    self.assert_told(page, label, meaning)
            for line in examples(text):
                self.assertIn(line, page)

    def assert_told(self, page, label, meaning):
        self.assertIn(label.replace("...", ""), page)
        self.assertIn(meaning.rstrip(".?"), page)


class Variables(unittest.TestCase):
    def test_each_variable_that_is_read_is_in_the_page_and_in_readme(self):
        names = set()
        for folder in ("platform", "trace", "context", "collector", "xml", "tools"):
            for file in (SOURCE / folder).rglob("*.cpp"):
                text = file.read_text(encoding="utf-8")
                if "VELGetEnv(" in text or "ReadText(" in text:
                    names.update(re.findall(r'(?:VELGetEnv|ReadText)\("(\w+)"', text))
                    names.update(re.findall(r'Variable = "(\w+)"', text))
                    names.update(re.findall(r'"(LC_\w+|LANG)"', text))
        self.assertGreaterEqual(len(names), 15, names)
        page = FRAME.read_text(encoding="utf-8")
        readme = (SOURCE / "README.md").read_text(encoding="utf-8")
        for name in names:
            self.assertRegex(page, rf"(?m)^\.(It )?Ev .*\b{name}\b", name)
            if name.startswith(("VEL", "TE_", "Exchange")):
                self.assertIn(name, readme)


class ContextPage(unittest.TestCase):
    def setUp(self):
        self.text = CONTEXT_PAGE.read_text(encoding="utf-8")

    def test_describes_each_element_and_attribute(self):
        header = (SOURCE / "xml" / "detail" / "ContextFileFormat.h").read_text(encoding="utf-8")
        schema = (SOURCE / "resources" / "schema" / "dyadctx-context.rnc").read_text(encoding="utf-8")
        names = set(re.findall(r'(?:Tag|Attribute|Detail) = "(\w+)"', header))
        names.update(re.findall(r"(?:element|attribute) (\w+) \{", schema))
        self.assertGreaterEqual(len(names), 20)
        for name in names:
            self.assertRegex(self.text, rf"(?m)^\.It Ic (\w+ , )*{name}( ,|$)", name)

    def test_names_each_key_of_a_rule_and_no_other(self):
        po = (SOURCE / "resources" / "messages" / "VELDyadCtxDlgSelection.en.po").read_text(
            encoding="utf-8")
        keys = set(re.findall(r'msgctxt "(Ctx\.(?:Check|Parse|SetFriendsAndAssociated)\.[\w.]+)"', po))
        self.assertEqual(set(re.findall(r"Ctx\.[A-Z][\w.]*\w", self.text)), keys)

    def test_its_examples_are_valid(self):
        files = re.findall(r"^\.Bd [^\n]*\n(<\?xml.*?)^\.Ed$", self.text, re.DOTALL | re.MULTILINE)
        self.assertEqual(len(files), 2)
        for text, options in zip(files, ([], ["--db-context"])):
            with tempfile.TemporaryDirectory() as folder:
                (Path(folder) / "a.xml").write_text(text, encoding="utf-8")
                run = subprocess.run([TOOL, "check", "a.xml", "--fail-on", "note", *options],
                                     cwd=folder, capture_output=True, text=True, check=False)
                self.assertEqual((run.returncode, run.stderr), (0, ""), run.stdout)


class Installed(unittest.TestCase):
    FILES = ["share/man/man1/dyadctx.1", "share/man/man5/dyadctx-context.5",
             "share/bash-completion/completions/dyadctx", "share/zsh/site-functions/_dyadctx",
             "share/fish/vendor_completions.d/dyadctx.fish", "share/dyadctx/schema/catalog.xml",
             "share/dyadctx/schema/dyadctx-context.rnc", "share/dyadctx/schema/dyadctx-context.rng",
             "share/dyadctx/schema/dyadctx-context.xsd",
             "share/dyadctx/schema/dyadctx-check.schema.json"]

    def test_brings_pages_completion_and_schemas(self):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run(["cmake", "--install", BUILD, "--prefix", folder], check=True,
                           capture_output=True)
            for name in self.FILES:
                self.assertGreater((Path(folder) / name).stat().st_size, 100, name)
            tool = [str(Path(folder) / "bin" / "dyadctx")]
            for shell, name in zip(("bash", "zsh", "fish"), self.FILES[2:5]):
                script = subprocess.run([*tool, "completion", shell], capture_output=True,
                                        check=True).stdout
                self.assertEqual((Path(folder) / name).read_bytes(), script)


if __name__ == "__main__":
    unittest.main()
