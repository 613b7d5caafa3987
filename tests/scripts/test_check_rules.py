#!/usr/bin/env python3
"""The house-rule check over small trees made for each case: each rule catches its violation,
and leaves alone what it allows."""
import os
import subprocess
import sys
import tempfile
import unittest

SCRIPT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "scripts", "check-rules.sh")

# legend, files of the tree {path: text}, allowlist text, the rule that must be reported (None: passes)
CASES = [
    ("a window folder on the frame and the platform is fine",
     {"fenklib/config/CDlg.cpp": '#include "fenklib/frame/CFenkDialog.h"\n#include "platform/devio/IReceiver.h"\n'}, "", None),
    ("the frame including a window folder goes up a layer",
     {"fenklib/frame/Helper.cpp": '#include "fenklib/status/CSkyPlot.h"\n'}, "", "layer"),
    ("the command layer including the frame goes up a layer",
     {"fenklib/receiver/Mate.cpp": '#include "fenklib/frame/CFenkLibApp.h"\n'}, "", "layer"),
    ("the base library including the device layer goes up a layer",
     {"platform/basekit/ustring.cpp": '#include "platform/devio/IPort.h"\n'}, "", "layer"),
    ("a folder the layer table does not know",
     {"fenklib/newfolder/X.cpp": '#include "fenklib/frame/CFenkDialog.h"\n'}, "", "layer"),
    ("a window folder including another window folder",
     {"fenklib/ports/CPortPP.cpp": '#include "fenklib/messages/MessageList.h"\n'}, "", "window"),
    ("Qt Widgets in the device layer",
     {"platform/devio/CLink.cpp": "#include <QWidget>\n"}, "", "widgets"),
    ("Qt Widgets by module path in the command layer",
     {"fenklib/receiver/Mate.h": "#include <QtWidgets/QLabel>\n"}, "", "widgets"),
    ("Qt Core in the device layer is fine",
     {"platform/devio/CLink.cpp": "#include <QString>\n#include <QTimer>\n"}, "", None),
    ("Qt Widgets in the frame, the dialog layer, is fine",
     {"fenklib/frame/CLayoutFactory.cpp": "#include <QDialog>\n"}, "", None),
    ("a command text formatted in a window",
     {"fenklib/site/CSiteDlg.cpp": 'const auto text = Format(L"set,/par/ant/rcv/%s,%s", a, b);\n'}, "", "command"),
    ("a command word in a comment or inside a sentence is not a command",
     {"fenklib/site/CSiteDlg.cpp": '// sends "set,/par/x,1"\n/* and "dm,/cur/term" */\nconst char* t = "reset, then wait";\n'},
     "", None),
    ("command texts belong in the command layer, the simulator and the tests",
     {"fenklib/receiver/Catalogue.cpp": 'L"print,rcv/model"\n', "tools/rcvsim/Core.cpp": '"em,/cur/term,%s"\n',
      "tests/receiver/test_mate.cpp": 'L"list,/par/dev"\n'}, "", None),
    ("a test that skips without a word",
     {"tests/devio/test_serial.cpp": "TEST(Serial, Opens) {\n    if (!HasPty()) GTEST_SKIP();\n}\n"}, "", "skip"),
    ("a test that says why it skips",
     {"tests/devio/test_serial.cpp": 'TEST(Serial, Opens) {\n    if (!HasPty()) GTEST_SKIP() << "no pseudo-terminals";\n}\n'},
     "", None),
    ("a violation listed with its reason passes",
     {"fenklib/ports/CPortPP.cpp": '#include "fenklib/messages/MessageList.h"\n'},
     "# the model moves later\nwindow fenklib/ports/CPortPP.cpp fenklib/messages/MessageList.h\n", None),
    ("a listed violation does not cover a new one beside it",
     {"fenklib/ports/CPortPP.cpp": '#include "fenklib/messages/MessageList.h"\n#include "fenklib/messages/CMsgDlg.h"\n'},
     "window fenklib/ports/CPortPP.cpp fenklib/messages/MessageList.h\n", "window"),
]


class CheckRules(unittest.TestCase):
    def run_case(self, files, allow):
        with tempfile.TemporaryDirectory() as root:
            for path, text in files.items():
                full = os.path.join(root, path)
                os.makedirs(os.path.dirname(full), exist_ok=True)
                with open(full, "w", encoding="utf-8") as f:
                    f.write(text)
            os.makedirs(os.path.join(root, "scripts"), exist_ok=True)
            with open(os.path.join(root, "scripts", "check-rules.allow"), "w", encoding="utf-8") as f:
                f.write(allow)
            done = subprocess.run(["bash", SCRIPT, root], capture_output=True, text=True, timeout=60)
            return done.returncode, done.stdout + done.stderr

    def test_each_rule_catches_its_violation(self):
        for legend, files, allow, rule in CASES:
            with self.subTest(legend):
                code, output = self.run_case(files, allow)
                if rule is None:
                    self.assertEqual(code, 0, output)
                else:
                    self.assertEqual(code, 1, output)
                    self.assertIn(": %s: " % rule, output)


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
