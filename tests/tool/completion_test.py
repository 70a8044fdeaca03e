# SPDX-License-Identifier: MIT
"""The completion scripts in the shells they are for.

Usage: completion_test.py TOOL. A shell that is not installed is skipped by name. PowerShell is not
run even where it is installed; of its script only the structure is checked.
"""

import os
import pty
import re
import select
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path
from xml.sax.saxutils import quoteattr

TOOL = Path(sys.argv.pop()).resolve()
# Each would do harm, or be torn apart, where a script evaluates or splits what it offers.
NAMES = ["DYADIC", "Design", "Drawing office", "Evil $(touch pwned) `touch pwned` ; touch pwned",
         "It's \"q\" \\ *", "B\u00fcro \u8a2d\u8a08", "a:b=c@d"]
COMMANDS = ["check", "explain", "list", "show", "which", "scenarios", "write", "diff", "graph", "settings",
            "schema", "completion", "help"]


def context(name):
    kind = "Default" if name == "DYADIC" else "Path"
    parameter = "" if name == "DYADIC" else "/data/x"
    return f'<Context Name={quoteattr(name)} Parameter="{parameter}" ParameterType="{kind}"/>'


def document(names, more=""):
    return ("<DyAdDescription><CtxData>" + "".join(map(context, names)) + more +
            "</CtxData></DyAdDescription>")


def converse(arguments, text, folder, environment):
    """Types the text into an interactive program on a terminal and waits for its end."""
    pid, terminal = pty.fork()
    if pid == 0:
        os.chdir(folder)
        os.execvpe(arguments[0], arguments, environment)
    os.write(terminal, text.encode())
    shown = b""
    end = time.monotonic() + 60
    while time.monotonic() < end:
        if not select.select([terminal], [], [], 1)[0]:
            continue
        try:
            piece = os.read(terminal, 65536)
        except OSError:
            piece = b""
        if not piece:
            break
        shown += piece
    else:
        os.kill(pid, 9)
    os.close(terminal)
    os.waitpid(pid, 0)
    return shown.decode(errors="replace")


class ShellTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        (self.folder / "Design").mkdir()
        (self.folder / "bin").mkdir()
        # Some shells split the search path at characters the build folder may hold.
        (self.folder / "bin" / "dyadctx").symlink_to(TOOL)
        (self.folder / "site.xml").write_text(document(NAMES), encoding="utf-8")
        base = '<Context Name="Vault" Parameter="v" ParameterType="Database" ConnectorName="KRL"/>'
        (self.folder / "my files.xml").write_text(document(["Other"], base), encoding="utf-8")
        self.environment = {
            "PATH": f"{self.folder / 'bin'}:{os.environ['PATH']}", "HOME": str(self.folder),
            "TERM": "dumb", "LC_ALL": "C.UTF-8", "VELSettingPath": str(self.folder),
            "VELDyadCtxInit": str(self.folder / "site.xml"),
            "VELDyadCtxOut": str(self.folder / "written.xml"),
            "VELDyadContextTrace": str(self.folder / "trace.txt")}

    def tearDown(self):
        for harm in ("pwned", "written.xml", "trace.txt"):
            self.assertFalse((self.folder / harm).exists(), harm)

    def run_script(self, arguments, script):
        run = subprocess.run([*arguments, script], cwd=self.folder, env=self.environment,
                             capture_output=True, text=True, timeout=60, check=False)
        self.assertEqual(run.stderr, "")
        return run.stdout.splitlines()

    def typed(self, arguments, setup, lines):
        """What the tool gets when the lines are typed: one list of arguments per line.

        The tool itself is asked by the completion, but a function of its name gets the lines.
        """
        text = "\n".join([setup, *lines, "exit", ""])
        environment = {**self.environment, "PS1": "> "}
        shown = converse(arguments, text, self.folder, environment)
        log = self.folder / "calls"
        self.assertTrue(log.exists(), shown)
        return [re.findall(r"<(.*?)>", line) for line in log.read_text().splitlines()]


# Keys typed, where ~ is the tabulator, and what the tool must get.
TYPED = [
    ("dyadctx ch~site.xml", ["check", "site.xml"]),
    ("dyadctx list --forma~n~", ["list", "--format", "names"]),
    ("dyadctx check my~", ["check", "my files.xml"]),
    ("dyadctx check s~", ["check", "site.xml"]),
    ("dyadctx list my\\ files.xml --provider K~", ["list", "my files.xml", "--provider", "KRL"]),
    ("dyadctx show Dr~site.xml", ["show", "Drawing office", "site.xml"]),
    ('dyadctx show "Dr~site.xml', ["show", "Drawing office", "site.xml"]),
    ("dyadctx show Des~", ["show", "Design"]),
    ("dyadctx show E~", ["show", NAMES[3]]),
    ('dyadctx show "E~', ["show", NAMES[3]]),
    ("dyadctx show I~", ["show", NAMES[4]]),
    ('dyadctx show "I~', ["show", NAMES[4]]),
    ("dyadctx show 'I~", ["show", NAMES[4]]),
    ("dyadctx show B~", ["show", NAMES[5]]),
    ("dyadctx show a~", ["show", NAMES[6]]),
    ("dyadctx show a:~", ["show", NAMES[6]]),
    ("dyadctx graph my\\ files.xml --db-context --focus V~",
     ["graph", "my files.xml", "--db-context", "--focus", "Vault"]),
    ('dyadctx graph "my files.xml" --db-context --focus=V~',
     ["graph", "my files.xml", "--db-context", "--focus=Vault"]),
    ("dyadctx graph my\\ files.xml --focus O~", ["graph", "my files.xml", "--focus", "Other"]),
]
SAID = [(keys.replace("~", "\t"), expected) for keys, expected in TYPED]


@unittest.skipUnless(shutil.which("bash"), "bash is not installed")
class Bash(ShellTest):
    CALL = r"""
source <(dyadctx completion bash)
try() {
    COMP_LINE=$1$2 COMP_POINT=${#1}
    _dyadctx
    printf '%s|' "${COMPREPLY[@]}"
    echo
}
"""

    def offered(self, before, behind=""):
        quoted = [text.replace("'", "'\\''") for text in (before, behind)]
        script = self.CALL + f"try '{quoted[0]}' '{quoted[1]}'\n"
        return self.run_script(["bash", "--norc", "-c"], script)[0].split("|")[:-1]

    def test_offers_commands_options_and_their_values(self):
        self.assertEqual(self.offered("dyadctx "), COMMANDS)
        self.assertEqual(self.offered("dyadctx --lang fr set"), ["settings"])
        self.assertEqual(self.offered("dyadctx check --fail-on "), ["error", "warning", "note"])
        self.assertEqual(self.offered("dyadctx list --format="), ["text", "json", "names",
                                                                  "providers"])
        self.assertEqual(self.offered("dyadctx check --off friend-"), ["friend-ring"])
        self.assertEqual(self.offered("dyadctx --color n"), ["never"])
        self.assertEqual(self.offered("dyadctx settings "), ["path", "get", "set", "unset"])
        self.assertEqual(self.offered("dyadctx settings set D"), ["DYAD_Ctx_XmlFile"])
        self.assertEqual(self.offered("dyadctx settings get --fo"), ["--format"])
        self.assertEqual(self.offered("dyadctx completion z"), ["zsh"])
        self.assertEqual(self.offered("dyadctx schema json w"), ["which"])
        self.assertEqual(self.offered("dyadctx explain Ctx.Check.CtxEmptyN"),
                         ["Ctx.Check.CtxEmptyName"])
        self.assertEqual(self.offered("dyadctx explain unused-a"), ["unused-attribute"])
        self.assertEqual(self.offered("dyadctx graph --renderer "), ["own", "dot"])
        self.assertIn("--db-context", self.offered("dyadctx graph -"))
        self.assertEqual(self.offered("dyadctx list -- --f"), [""])

    def test_takes_names_from_the_file_behind_the_cursor(self):
        self.assertEqual(self.offered("dyadctx show ", ' "my files.xml"'), ["Other"])
        self.assertEqual(self.offered('dyadctx show "O', '" my\\ files.xml --db-context'), ["Other"])
        self.assertEqual(self.offered("dyadctx show V", " my\\ files.xml --db-context"), ["Vault"])

    def test_takes_names_from_a_file_in_the_home_folder(self):
        self.assertEqual(self.offered("dyadctx graph ~/my\\ files.xml --focus "), ["Other"])

    def test_takes_names_from_a_file_with_errors(self):
        faulty = '<Context Name="Bad" Parameter="x" ParameterType="Folder"/>'
        (self.folder / "faulty.xml").write_text(document(["Good"], faulty), encoding="utf-8")
        self.assertEqual(self.offered("dyadctx show ", " faulty.xml"), ["Good", "Bad"])

    def test_takes_providers_from_the_file_on_the_line(self):
        self.assertEqual(self.offered("dyadctx list my\\ files.xml --provider "), ["KRL"])
        self.assertEqual(self.offered("dyadctx list my\\ files.xml --provider X"), [""])

    def test_offers_folders_and_context_files(self):
        (self.folder / "notes.txt").touch()
        self.assertEqual(self.offered("dyadctx check "),
                         ["Design/", "bin/", "my\\ files.xml", "site.xml"])
        self.assertEqual(self.offered("dyadctx diff site.xml s"), ["site.xml"])
        self.assertEqual(self.offered("dyadctx check ~/s"), ["~/site.xml"])
        self.assertEqual(self.offered("dyadctx check no"), [""])

    def test_offers_nothing_where_there_are_no_names(self):
        self.assertEqual(self.offered("dyadctx show X"), [""])
        self.assertEqual(self.offered("dyadctx graph none.xml --focus "), [""])
        self.assertEqual(self.offered("dyadctx graph $(touch${IFS}pwned) --focus "), [""])
        self.assertEqual(self.offered("dyadctx graph `touch${IFS}pwned`.xml --focus "), [""])

    def test_what_is_typed_arrives(self):
        setup = ("source <(command dyadctx completion bash)\n"
                 "dyadctx() { printf '<%s>' \"$@\" >>calls; echo >>calls; }")
        arrived = self.typed(["bash", "--norc", "--noprofile", "-i"], setup,
                             [keys for keys, expected in SAID])
        self.assertEqual(arrived, [expected for keys, expected in SAID])


@unittest.skipUnless(shutil.which("zsh"), "zsh is not installed")
class Zsh(ShellTest):
    CALLS = "dyadctx() { printf '<%s>' \"$@\" >>calls; echo >>calls; }"

    def test_script_is_well_formed(self):
        script = subprocess.run([TOOL, "completion", "zsh"], capture_output=True, text=True,
                                check=True).stdout
        (self.folder / "_dyadctx").write_text(script, encoding="utf-8")
        self.run_script(["zsh", "-f", "-n"], str(self.folder / "_dyadctx"))

    def test_what_is_typed_arrives(self):
        setup = f"autoload -U compinit; compinit -u -D\nsource <(command dyadctx completion zsh)\n{self.CALLS}"
        arrived = self.typed(["zsh", "-f", "-i"], setup, [keys for keys, expected in SAID])
        self.assertEqual(arrived, [expected for keys, expected in SAID])

    def test_works_as_a_function_of_fpath(self):
        self.test_script_is_well_formed()
        setup = f"fpath=($HOME $fpath); autoload -U compinit; compinit -u -D\n{self.CALLS}"
        arrived = self.typed(["zsh", "-f", "-i"], setup, ["dyadctx show Dr\t", "dyadctx di\tA B"])
        self.assertEqual(arrived, [["show", "Drawing office"], ["diff", "A", "B"]])


@unittest.skipUnless(shutil.which("fish"), "fish is not installed")
class Fish(ShellTest):
    def offered(self, line):
        quoted = line.replace("\\", "\\\\").replace("'", "\\'")
        script = f"dyadctx completion fish | source\ncomplete -C '{quoted}'\n"
        lines = self.run_script(["fish", "--private", "--no-config", "-c"], script)
        return sorted(line.split("\t")[0] for line in lines)

    def test_offers_commands_options_and_their_values(self):
        self.assertEqual(self.offered("dyadctx "), sorted(COMMANDS))
        self.assertEqual(self.offered("dyadctx check --fail-on "), ["error", "note", "warning"])
        self.assertEqual(self.offered("dyadctx list --format=n"), ["--format=names"])
        self.assertEqual(self.offered("dyadctx settings "), ["get", "path", "set", "unset"])
        self.assertEqual(self.offered("dyadctx settings set D"), ["DYAD_Ctx_XmlFile"])
        self.assertEqual(self.offered("dyadctx schema json w"), ["which"])
        self.assertIn("--db-context", self.offered("dyadctx graph --"))
        self.assertIn("my files.xml", self.offered("dyadctx check "))

    def test_offers_names_of_contexts(self):
        self.assertEqual(self.offered("dyadctx show "), sorted(NAMES))
        self.assertEqual(self.offered("dyadctx show E"), [NAMES[3]])
        self.assertEqual(self.offered("dyadctx graph my\\ files.xml --focus "), ["Other"])
        self.assertEqual(self.offered('dyadctx graph "my files.xml" --db-context --focus '),
                         ["Other", "Vault"])
        self.assertEqual(self.offered("dyadctx graph none.xml --focus "), [])


class PowerShell(unittest.TestCase):
    """PowerShell does not belong to what can be installed, so nothing runs its script."""

    def setUp(self):
        self.script = subprocess.run([TOOL, "completion", "powershell"], capture_output=True,
                                     text=True, check=True).stdout

    def row(self, command):
        found = re.search(rf"^        '{command}' = @\{{\n(.*?)^        \}}$", self.script,
                          re.DOTALL | re.MULTILINE)
        return found.group(1)

    def test_registers_a_completer_with_a_row_for_each_command(self):
        self.assertIn("Register-ArgumentCompleter -Native -CommandName dyadctx", self.script)
        self.assertNotIn("@TABLE@", self.script)
        for command in ["", *COMMANDS, "settings set"]:
            self.assertIn("Options = @(", self.row(command))
        self.assertIn("Values = @('contexts', 'contextfiles')", self.row("show"))
        self.assertIn("'words text json names providers'", self.row("list"))
        self.assertIn("Repeats = $true", self.row("check"))

    def test_brackets_and_quotes_are_balanced(self):
        code = "\n".join(line for line in self.script.splitlines()
                         if not line.lstrip().startswith("#"))
        bare = re.sub(r"'(?:[^']|'')*'|\"[^\"]*\"", "", code)
        self.assertNotRegex(bare, r"['\"]")
        for opening, closing in ("()", "{}", "[]"):
            self.assertEqual(bare.count(opening), bare.count(closing), opening)

    def test_each_option_has_an_offer_and_a_meaning(self):
        for command in ["", *COMMANDS]:
            row = self.row(command)
            counts = [len(re.findall(r"'(?:[^']|'')*'", re.search(
                rf"^            {name} = @\((.*?)\)$", row, re.DOTALL | re.MULTILINE).group(1)))
                for name in ("Options", "Offers", "Meanings")]
            self.assertEqual(len(set(counts)), 1, (command, counts))


if __name__ == "__main__":
    unittest.main()
