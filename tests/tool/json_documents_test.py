# SPDX-License-Identifier: MIT
"""Every JSON document of the tool is as its schema says, and a problem matcher reads the text for people.

Usage: json_documents_test.py TOOL SOURCE_DIR
"""

import copy
import json
import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from json_schema import Checker

SOURCE = Path(sys.argv.pop())
TOOL = sys.argv.pop()
SCHEMAS = SOURCE / "resources" / "schema"
VARIABLES = ("VELDyadCtxInit", "VELInstallPath", "VELDyadCtxOut", "VELDbContextEnvironment",
             "TE_MULTISITE_DBCONTEXT", "VELMessageLanguage")


def load_schema(command):
    return json.loads((SCHEMAS / f"dyadctx-{command}.schema.json").read_text(encoding="utf-8"))


class Documents(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        settings = Path(self.folder.name) / "settings"
        self.environment = {name: value for name, value in os.environ.items()
                            if name not in VARIABLES}
        self.environment.update(VELSettingPath=str(settings), TE_MULTISITE_DBCONTEXT="1",
                                VELDbContextEnvironment="1")

    def run_tool(self, *arguments):
        run = subprocess.run([TOOL, *arguments, "--format", "json"], capture_output=True, text=True,
                             env=self.environment, check=False)
        self.assertNotEqual(run.stdout, "", run.stderr)
        return json.loads(run.stdout)

    def check(self, *arguments):
        """Gives the document, which must fit the schema of its command."""
        document = self.run_tool(*arguments)
        self.assertEqual(Checker(load_schema(arguments[0])).faults(document), [], arguments)
        return document

    def set_file(self, file):
        subprocess.run([TOOL, "settings", "set", "DYAD_Ctx_XmlFile", file], check=True,
                       env=self.environment)

    def example(self, name):
        return str(SOURCE / "examples" / name)

    def test_check(self):
        self.check("check", self.example("site.xml"))
        self.check("check", "/nowhere/none.xml")
        self.check("check")
        broken = sorted(map(str, (SOURCE / "examples" / "broken").glob("*.xml")))
        self.assertGreater(len(broken), 5)
        document = self.check("check", *broken)
        related = [finding for file in document["files"] for finding in file["findings"]
                   if finding["related"]]
        self.assertNotEqual(related, [])

    def test_the_problem_matcher_reads_the_findings_of_check(self):
        path = SOURCE / "resources" / "github" / "dyadctx-problem-matcher.json"
        pattern = json.loads(path.read_text(encoding="utf-8"))["problemMatcher"][0]["pattern"][0]
        broken = sorted(map(str, (SOURCE / "examples" / "broken").glob("*.xml")))
        run = subprocess.run([TOOL, "check", *broken], capture_output=True, text=True,
                             env=self.environment, check=False)
        parts = ("file", "line", "column", "severity", "code")
        matched = [tuple(match[pattern[part]] for part in parts)
                   for match in map(re.compile(pattern["regexp"]).match, run.stdout.splitlines())
                   if match]
        placed = [(file["file"], str(finding["line"]), str(finding["column"]), finding["severity"],
                   finding["key"])
                  for file in self.run_tool("check", *broken)["files"]
                  for finding in file["findings"] if finding["line"]]
        self.assertGreater(len(placed), 20)
        self.assertEqual([found for found in placed if found not in matched], [])

    def test_list_and_show(self):
        document = self.check("list", self.example("site.xml"))
        self.assertTrue(any(context["provider"] for context in document["contexts"]))
        for context in document["contexts"]:
            self.assertIsInstance(context["line"], int)
            self.check("show", context["name"], self.example("site.xml"))

    def test_list_of_a_file_with_errors(self):
        document = self.check("list", "--all", self.example("broken/unknown-type.xml"))
        self.assertEqual(document["contexts"][0]["state"], "error")

    def test_diff_of_passwords(self):
        files = []
        for password in ("one", "two"):
            files.append(Path(self.folder.name) / f"{password}.xml")
            files[-1].write_text("<DyAdDescription><CtxData><Context Name='A' ParameterType='Path' "
                                 f"Parameter='//u:{password}@h'/></CtxData></DyAdDescription>",
                                 encoding="utf-8")
        document = self.check("diff", *map(str, files))
        self.assertTrue(document["changed"][0]["changes"][0]["passwordDiffers"])

    def test_which(self):
        self.check("which")
        for value in ("0", "x", self.example("site.xml"), "none.xml"):
            self.environment["VELDyadCtxInit"] = value
            self.environment["VELInstallPath"] = "/nowhere;/neither"
            document = self.check("which")
            self.assertEqual(document, self.check("which", "--explain"))
            self.assertIn("VELInstallPath", [one["variable"] for one in document["withoutEffect"]])
        self.set_file("a.xml")
        settings = self.check("which")["candidates"][1]["settings"]
        self.assertEqual(settings["line"], 1)

    def test_scenarios(self):
        file = self.example("site.xml")
        row = self.check("scenarios", file)["scenarios"][0]
        self.check("scenarios", file, "--id", row["scenario"])
        self.check("scenarios", file, "--id", row["scenario"], "--channel", row["channel"])
        options = self.check("scenarios", file, "--channel", row["channel"], "--profile",
                             row["profile"])
        self.assertIn("options", options)

    def test_diff(self):
        other = Path(self.folder.name) / "other.xml"
        text = Path(self.example("site.xml")).read_text(encoding="utf-8")
        for old, new in (('Name="Library"', 'Name="Books"'), ('Parameter="/data', 'Parameter="/d'),
                         ('Name="Vault"', 'Name="Store"')):
            self.assertIn(old, text)
            text = text.replace(old, new)
        other.write_text(text, encoding="utf-8")
        document = self.check("diff", self.example("site.xml"), str(other))
        self.assertTrue(document["changed"])
        kinds = {change["what"] for context in document["changed"] for change in context["changes"]}
        self.assertLessEqual({"parameter", "friends", "associated"}, kinds)
        self.check("diff", str(other), str(other))

    def test_explain(self):
        keys = self.check("explain")["keys"]
        self.assertGreater(len(keys), 50)
        for key in keys:
            self.check("explain", key["key"])

    def test_settings(self):
        self.set_file("a.xml")
        self.check("settings", "path")
        self.check("settings", "get")
        self.check("settings", "get", "DYAD_Ctx_XmlFile")


class Schemas(unittest.TestCase):
    def test_a_document_that_lacks_or_adds_something_does_not_fit(self):
        finding = {"key": "k", "parameters": ["p"], "severity": "error", "cause": None, "text": "t",
                   "context": None, "line": 1, "column": None, "related": []}
        verdict = {"file": "a.xml", "valid": False, "message": "m", "findings": [finding]}
        document = {"schema": "dyadctx/check/1", "files": [verdict]}
        checker = Checker(load_schema("check"))
        self.assertEqual(checker.faults(document), [])
        for name in document:
            self.assertNotEqual(checker.faults({**document, name: 7}), [], name)
            without = {key: value for key, value in document.items() if key != name}
            self.assertNotEqual(checker.faults(without), [], name)
        for name in verdict:
            wrong = copy.deepcopy(document)
            del wrong["files"][0][name]
            self.assertNotEqual(checker.faults(wrong), [], name)
        for name in finding:
            wrong = copy.deepcopy(document)
            wrong["files"][0]["findings"][0][name] = {}
            self.assertNotEqual(checker.faults(wrong), [], name)
        self.assertNotEqual(checker.faults({**document, "more": 1}), [])

    def test_every_schema_describes_all_it_names(self):
        files = sorted(SCHEMAS.glob("*.schema.json"))
        self.assertGreaterEqual(len(files), 7)
        for file in files:
            with self.subTest(file.name):
                schema = json.loads(file.read_text(encoding="utf-8"))
                self.assertEqual(schema["$id"], file.name)
                self.assertNotEqual(Checker(schema).faults(None), [])


if __name__ == "__main__":
    unittest.main()
