#!/usr/bin/env python3
"""The house rules, checked over a source tree (scripts/check-rules.sh runs this).

  layer    a folder includes only the folders below it (the order of the CMake links)
  window   a window folder never includes another window folder
  widgets  no Qt Widgets below the dialog layer
  command  only fenklib/receiver formats receiver command texts
  skip     a test never skips without saying why

Violations that exist on purpose are listed, each with its reason, in scripts/check-rules.allow;
anything else fails. Usage: check_rules.py [root] [--allow FILE]
"""
import os
import re
import sys

# What each folder may include besides itself, from the libraries its CMake target links (and
# what those link in turn).
BASE = {"platform/basekit"}
PLATFORM = BASE | {"platform/geodesy", "platform/uikit", "platform/devio", "platform/hwctl"}
FRAME_BELOW = PLATFORM | {"fenklib/receiver", "fenklib/resources"}
WINDOWS = ["config", "controller", "files", "messages", "modem", "ports", "site", "status"]
WINDOW_FOLDERS = {"fenklib/" + w for w in WINDOWS}
ALLOWED = {
    "platform/basekit": set(),
    "platform/geodesy": set(),
    "platform/uikit": BASE,
    "platform/devio": BASE,
    "platform/hwctl": BASE,
    "fenklib/resources": BASE,
    "fenklib/receiver": BASE | {"platform/devio"},
    "fenklib/frame": FRAME_BELOW,
    # The modem command layer: the only code that writes modem command texts.
    "fenklib/modemctl": BASE | {"platform/devio", "fenklib/resources"},
    # The output-message lists and their windows, shared by the ports and the message windows.
    "fenklib/msglist": FRAME_BELOW | {"fenklib/frame"},
    # The library itself: the launcher table and the exports over every window.
    "fenklib": FRAME_BELOW | {"fenklib/frame", "fenklib/msglist", "fenklib/modemctl"} | WINDOW_FOLDERS,
    # The simulator shares the geodesy and the firmware image reader, nothing of the library.
    "tools/rcvsim": {"platform/geodesy", "platform/devio"},
    "tools/fwimage": PLATFORM,
    "tools/nmeadump": PLATFORM,
    # The host binds the library at run time; it includes the headers a host is given.
    "tools/lyn-utility": PLATFORM | {"tools/rcvsim", "fenklib", "fenklib/frame", "fenklib/files", "fenklib/receiver"},
}
for window in WINDOW_FOLDERS:
    ALLOWED[window] = FRAME_BELOW | {"fenklib/frame"}
ALLOWED["fenklib/messages"] |= {"fenklib/msglist"}
ALLOWED["fenklib/ports"] |= {"fenklib/msglist"}
ALLOWED["fenklib/modem"] |= {"fenklib/modemctl"}
ALLOWED["fenklib/status"] |= {"platform/geodesy"}
ALLOWED["fenklib/site"] |= {"platform/geodesy"}

# Folders whose code must not see Qt Widgets: everything below the dialog layer.
NO_WIDGETS = {"platform/basekit", "platform/devio", "platform/hwctl", "fenklib/receiver", "fenklib/resources"}
WIDGET_HEADERS = {
    "QAbstractButton", "QAbstractItemView", "QAction", "QApplication", "QButtonGroup", "QCheckBox", "QComboBox",
    "QDialog", "QDialogButtonBox", "QFileDialog", "QFormLayout", "QFrame", "QGridLayout", "QGroupBox",
    "QHBoxLayout", "QHeaderView", "QInputDialog", "QLabel", "QLayout", "QLineEdit", "QListView", "QListWidget",
    "QMainWindow", "QMenu", "QMenuBar", "QMessageBox", "QPlainTextEdit", "QProgressBar", "QPushButton",
    "QRadioButton", "QScrollArea", "QSlider", "QSpinBox", "QSplitter", "QStackedWidget", "QStatusBar", "QStyle",
    "QTabWidget", "QTableWidget", "QTextEdit", "QToolButton", "QToolTip", "QTreeView", "QTreeWidget",
    "QVBoxLayout", "QWidget", "QWizard", "QtWidgets",
}

# Receiver command words, as a command text begins: the word and its comma.
COMMAND_WORDS = ["print", "set", "list", "em", "dm", "init", "event", "create", "remove"]
COMMAND_RE = re.compile(r"^(%s)," % "|".join(COMMAND_WORDS))
# Who may write command texts: the command layer, the simulator that answers them, and the code
# that measures or tests the link itself.
COMMAND_FREE = ("fenklib/receiver/", "tools/rcvsim/", "tests/", "bench/", "fuzz/")

SOURCE_SUFFIXES = (".cpp", ".h", ".hpp", ".cc")
SKIPPED_DIRS = {".git", "build"}


def qt_widget_headers():
    """The class headers of the installed Qt Widgets, with the common ones when Qt is not found."""
    headers = set(WIDGET_HEADERS)
    for base in ("/usr/include/x86_64-linux-gnu/qt6", "/usr/include/aarch64-linux-gnu/qt6", "/usr/include/qt6"):
        folder = os.path.join(base, "QtWidgets")
        if os.path.isdir(folder):
            headers |= {name for name in os.listdir(folder) if name.startswith("Q") and "." not in name}
    return headers


def strip_comments(text):
    """The code with its comments blanked (line breaks kept), and its string literals as (line, text)."""
    out, literals = [], []
    i, line, n = 0, 1, len(text)
    while i < n:
        c = text[i]
        if text.startswith("//", i):
            end = text.find("\n", i)
            i = n if end < 0 else end
            continue
        if text.startswith("/*", i):
            end = text.find("*/", i + 2)
            end = n if end < 0 else end + 2
            breaks = text.count("\n", i, end)
            out.append("\n" * breaks)
            line += breaks
            i = end
            continue
        raw = re.match(r'R"([^(\s]*)\(', text[i:i + 20]) if c == "R" and (i == 0 or not text[i - 1].isalnum()) else None
        if raw:
            close = ")" + raw.group(1) + '"'
            end = text.find(close, i + raw.end())
            end = n if end < 0 else end + len(close)
            literals.append((line, text[i + raw.end():end - len(close)]))
            out.append(text[i:end])
            line += text.count("\n", i, end)
            i = end
            continue
        if c in "\"'":
            j = i + 1
            while j < n and text[j] != c and text[j] != "\n":
                j += 2 if text[j] == "\\" else 1
            if c == '"':
                literals.append((line, text[i + 1:j]))
            out.append(text[i:j + 1])
            i = j + 1
            continue
        if c == "\n":
            line += 1
        out.append(c)
        i += 1
    return "".join(out), literals


def folder_of(path):
    """The layer folder a file (or an included path) belongs to, or None when it is not layered."""
    parts = path.split("/")
    if parts[0] == "platform" and len(parts) > 2:
        return "platform/" + parts[1]
    if parts[0] == "fenklib":
        return "fenklib/" + parts[1] if len(parts) > 2 else "fenklib"
    if parts[0] == "tools" and len(parts) > 2:
        return "tools/" + parts[1]
    return None


def check_file(path, text, widget_headers):
    """Every violation in one file: (rule, line, what, message)."""
    found = []
    code, literals = strip_comments(text)
    here = folder_of(path)
    for number, source_line in enumerate(code.split("\n"), start=1):
        include = re.match(r'\s*#\s*include\s*([<"])([^>"]+)[>"]', source_line)
        if include:
            target = include.group(2)
            if include.group(1) == '"' and here is not None:
                there = folder_of(target)
                if there is not None and there != here:
                    if here in WINDOW_FOLDERS and there in WINDOW_FOLDERS:
                        found.append(("window", number, target, "the window folder %s includes the window folder %s" % (here, there)))
                    elif here not in ALLOWED:
                        found.append(("layer", number, target, "%s is not in the layer table of scripts/check_rules.py" % here))
                    elif there not in ALLOWED[here]:
                        found.append(("layer", number, target, "%s includes %s, which is not below it" % (here, there)))
            name = target.split("/")[0] if target.startswith("QtWidgets/") else target
            if include.group(1) == "<" and here in NO_WIDGETS and (name in widget_headers or name == "QtWidgets"):
                found.append(("widgets", number, target, "Qt Widgets in %s, below the dialog layer" % here))
        if re.search(r"\bGTEST_SKIP\s*\(\s*\)\s*;", source_line):
            found.append(("skip", number, "GTEST_SKIP()", "a test skipped without saying why (GTEST_SKIP() << \"...\")"))
    if not path.startswith(COMMAND_FREE):
        for number, literal in literals:
            word = COMMAND_RE.match(literal)
            if word:
                found.append(("command", number, word.group(0),
                              "the command text \"%s\" is formatted outside fenklib/receiver" % literal))
    return found


def read_allowlist(path):
    """The violations allowed on purpose: (rule, file, what) from lines 'rule file what'."""
    allowed = set()
    if not os.path.exists(path):
        return allowed
    with open(path, encoding="utf-8") as f:
        for number, line in enumerate(f, start=1):
            line = line.split("#", 1)[0].strip()
            if not line:
                continue
            fields = line.split(None, 2)
            if len(fields) != 3:
                sys.exit("%s:%d: expected 'rule file what'" % (path, number))
            allowed.add(tuple(fields))
    return allowed


def source_files(root):
    for folder, dirs, files in os.walk(root):
        dirs[:] = sorted(d for d in dirs if d not in SKIPPED_DIRS and not d.startswith("build"))
        for name in sorted(files):
            if name.endswith(SOURCE_SUFFIXES):
                full = os.path.join(folder, name)
                yield os.path.relpath(full, root).replace(os.sep, "/"), full


def main(argv):
    args = [a for a in argv if not a.startswith("--allow=")]
    root = os.path.abspath(args[0] if args else os.path.join(os.path.dirname(__file__), ".."))
    allow_path = next((a.split("=", 1)[1] for a in argv if a.startswith("--allow=")),
                      os.path.join(root, "scripts", "check-rules.allow"))
    allowed = read_allowlist(allow_path)
    widget_headers = qt_widget_headers()
    failures, used = 0, set()
    for relative, full in source_files(root):
        with open(full, encoding="utf-8", errors="replace") as f:
            text = f.read()
        for rule, number, what, message in check_file(relative, text, widget_headers):
            key = (rule, relative, what)
            if key in allowed:
                used.add(key)
                continue
            print("%s:%d: %s: %s" % (relative, number, rule, message))
            failures += 1
    for rule, relative, what in sorted(allowed - used):
        print("note: %s no longer needs its allowance (%s %s %s)" % (allow_path, rule, relative, what))
    if failures:
        print("%d house-rule violation(s)" % failures)
        return 1
    print("house rules kept (%d allowed exception(s) in use)" % len(used))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
