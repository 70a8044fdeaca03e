# SPDX-License-Identifier: MIT
"""Plants breaches of the layers in a small tree and looks for the complaint about each."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SCRIPT = sys.argv.pop(1)


def check(files):
    with tempfile.TemporaryDirectory() as folder:
        for name, text in files.items():
            path = Path(folder) / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        return subprocess.run([sys.executable, SCRIPT, folder], capture_output=True, text=True,
                              check=False)


class CheckLayers(unittest.TestCase):
    def test_a_tree_that_keeps_the_layers_passes(self):
        run = check({
            "platform/posix/Files.cpp": "#include <unistd.h>\n#include <expat.h>\n",
            "platform/VELExport.h": "#if defined(_WIN32)\n#endif\n",
            "platform/detail/Environment.cpp": "auto v = getenv(name);\n",
            "collector/Registry.cpp": '#include "collector/A.h"\n#include "platform/B.h"\n',
            "collector/Creation.cpp": '#include "xml/detail/VELDyadCtxXml.h"\n',
            "context/A.cpp": '// getenv and _WIN32 may be talked about\n#include <vector>\n',
            "collector/A.cpp": '#include "collector/detail/CollectorInternals.h"\n',
            "tests/collector/B.cpp": '#include "collector/detail/CollectorInternals.h"\n',
            "tools/dyadctx/Text.cpp": '#include "platform/detail/Utf8.h"\n',
            "tools/dyadctx/layout/B.cpp": '#include "check/detail/StrongComponents.h"\n',
            "tests/collector/A.cpp": '#include "collector/detail/CollectorIndex.h"\n'
                                     "#include <gtest/gtest.h>\n",
        })
        self.assertEqual((run.returncode, run.stdout), (0, ""))

    def test_each_breach_is_reported_with_its_place(self):
        breaches = {
            "platform/A.h": ('#include "context/VELDyadContext.h"',
                             'platform/ may not include "context/VELDyadContext.h"'),
            "context/A.cpp": ('#include "collector/A.h"', 'context/ may not include "collector/A.h"'),
            "collector/Registry.cpp": ('#include "xml/detail/A.h"',
                                       'collector/ may not include "xml/detail/A.h"'),
            "xml/C.cpp": ('#include "collector/detail/CollectorInternals.h"',
                          'xml/ may not include "collector/detail/CollectorInternals.h" of collector/'),
            "trace/A.cpp": ("auto v = getenv(name);", "getenv outside platform/"),
            "xml/A.cpp": ("#ifdef _WIN32", "_WIN32 outside platform/"),
            "xml/B.cpp": ("#include <expat.h>", "third-party header <expat.h> outside platform/"),
            "collector/B.cpp": ("#include <windows.h>",
                                "system header <windows.h> outside a posix/ or windows/ folder"),
            "tests/xml/A.cpp": ("#include <unistd.h>",
                                "system header <unistd.h> outside a posix/ or windows/ folder"),
            "tools/dyadctx/layout/A.cpp": ('#include "tools/dyadctx/graph/GraphModel.h"',
                                           "tools/dyadctx/layout/ may not include "
                                           '"tools/dyadctx/graph/GraphModel.h"'),
            "tools/dyadctx/A.cpp": ('#include "collector/detail/CollectorIndex.h"',
                                    "tools/ may not include the private "
                                    '"collector/detail/CollectorIndex.h"'),
        }
        for name, (line, complaint) in breaches.items():
            with self.subTest(name):
                run = check({name: "// first line\n" + line + "\n"})
                self.assertEqual((run.returncode, run.stdout), (1, f"{name}:2: {complaint}\n"))


if __name__ == "__main__":
    unittest.main()
