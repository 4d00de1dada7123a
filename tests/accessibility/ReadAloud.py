"""Walks the running program the way a screen reader does: over the live AT-SPI tree, from the start page to a submittal,
then through Compare, the overview and the import.

Usage: ReadAloud.py FOLDER-OF-THE-PROGRAM
Prints what a screen reader would say. Fails if a control that has or can take the focus has no name, if the start page or
a step of the way cannot be found, or if the report cannot be read. Runs itself again in a session bus and a display of its
own.
"""
import os
import sqlite3
import subprocess
import sys
import tempfile
import time

if "READ_ALOUD_DISPLAY" not in os.environ:
    os.environ["READ_ALOUD_DISPLAY"] = "1"
    inner = ["xvfb-run", "-a", "-s", "-screen 0 1366x768x24", sys.executable, *sys.argv]
    os.execvp("dbus-run-session", ["dbus-run-session", "--", *inner])

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

TIMEOUT = 60  # seconds for a step; none takes one on an idle machine
NEEDS_NAME = {
    Atspi.Role.PUSH_BUTTON, Atspi.Role.TEXT, Atspi.Role.ENTRY, Atspi.Role.COMBO_BOX, Atspi.Role.CHECK_BOX,
    Atspi.Role.RADIO_BUTTON, Atspi.Role.TREE, Atspi.Role.TREE_TABLE, Atspi.Role.TABLE, Atspi.Role.LIST,
    Atspi.Role.DOCUMENT_FRAME, Atspi.Role.TOGGLE_BUTTON, Atspi.Role.MENU, Atspi.Role.MENU_ITEM,
}
failures = []
Atspi.set_timeout(TIMEOUT * 1000, TIMEOUT * 1000) # an answer of the program, which may be painting a report


def children(node):
    for i in range(node.get_child_count()):
        child = node.get_child_at_index(i)
        if child is not None:
            yield child


def tree(node, depth=0):
    yield node
    if depth < 40:
        for child in children(node):
            yield from tree(child, depth + 1)


def showing(node):
    states = node.get_state_set()
    return states.contains(Atspi.StateType.SHOWING) and states.contains(Atspi.StateType.VISIBLE)


def spoken(node):
    words = [node.get_name() or "(no name)", node.get_role_name()]
    if node.get_description():
        words.append(node.get_description())
    if not node.get_state_set().contains(Atspi.StateType.ENABLED):
        words.append("unavailable")
    return ", ".join(word.replace("\n", " ") for word in words)


def application():
    desktop = Atspi.get_desktop(0)
    return next((app for app in children(desktop) if app.get_name().lower() == "brennoval"), None)


def wait_for(what, find):
    end = time.monotonic() + TIMEOUT
    while time.monotonic() < end:
        while GLib.MainContext.default().iteration(False):
            pass
        try:
            found = find()
        except GLib.Error:  # the node went away meanwhile
            found = None
        if found:
            return found
        time.sleep(0.05)
    app = application()
    sys.exit(f"{what} is not in the tree:\n" + "\n".join(spoken(n) for n in tree(app) if showing(n)) if app else "no program")


def control(name, roles=None):
    def find():
        app = application()
        for node in tree(app) if app else ():
            if (node.get_name() or "").replace("&", "") == name and showing(node) and (not roles or node.get_role() in roles):
                return node
        return None

    return wait_for(name, find)


def press(name):
    node = control(name, {Atspi.Role.PUSH_BUTTON, Atspi.Role.RADIO_BUTTON, Atspi.Role.TOGGLE_BUTTON, Atspi.Role.MENU_ITEM})
    print("  press:", spoken(node))
    actions = [Atspi.Action.get_action_name(node, i) for i in range(Atspi.Action.get_n_actions(node))]
    Atspi.Action.do_action(node, next(i for i, action in enumerate(actions) if action.lower() in ("press", "toggle", "showmenu")))


def write(name, text):
    node = control(name, {Atspi.Role.TEXT, Atspi.Role.ENTRY})
    print("  write:", spoken(node), "=", text)
    node.grab_focus()
    wait_for("the focus at " + name, lambda: (node.grab_focus(), node.clear_cache()) and node.get_state_set().contains(Atspi.StateType.FOCUSED))
    subprocess.run(["xdotool", "type", text], check=True)  # a user types; the text before is selected
    wait_for("the text " + text, lambda: Atspi.Text.get_text(node, 0, -1) == text)


def choose(name, before, after):
    """Chooses the next text of a list with the keyboard; the list is called by its choice."""
    heard = []
    listener = Atspi.EventListener.new(lambda event: heard.append((event.source.get_name(), event.type)))
    for kind in ("accessible-name", "accessible-value"):
        listener.register("object:property-change:" + kind)
    node = control(name + ": " + before, {Atspi.Role.COMBO_BOX})
    print("  choose:", spoken(node), "->", after)
    node.grab_focus()
    wait_for("the focus at " + name, lambda: (node.grab_focus(), node.clear_cache()) and node.get_state_set().contains(Atspi.StateType.FOCUSED))
    subprocess.run(["xdotool", "type", after], check=True)
    for kind in ("accessible-name", "accessible-value"):
        wait_for(f"the word of {kind} about {after}",
                 lambda: (name + ": " + after, "object:property-change:" + kind) in heard)


def walk_rows(after, before):
    """Goes down a list and up again; the row that gets the focus tells what it holds."""
    for key, row in (("Down", after), ("Up", before)):
        subprocess.run(["xdotool", "key", key], check=True)
        node = control(row, {Atspi.Role.TABLE_CELL})
        wait_for("the focus at " + row, lambda: node.clear_cache() or node.get_state_set().contains(Atspi.StateType.FOCUSED))
        print("  row:", spoken(node))


def check_names(screen):
    print(screen + ":")
    for node in tree(application()):
        states = node.get_state_set()
        if not showing(node) or node.get_role() not in NEEDS_NAME or not states.contains(Atspi.StateType.FOCUSABLE):
            continue
        if not (node.get_name() or "").strip():
            failures.append(f"{screen}: a {node.get_role_name()} has no name")


def open_the_others():
    for caption, title in (("Job overview", "Job Overview 2026-014"), ("Job package...", "Job Package 2026-014"),
                           ("Import conditions...", "Import Conditions"), ("Compare models...", "Compare Models"),
                           ("Restore...", "Restore"), ("Delete job", "Select job... to delete"),
                           ("Convert steel tank to bladder tank", "Convert Steel Tank to Bladder Tank..."),
                           ("Contractors", "Maintain Contractors"), ("System Setup", "User Setup..."),
                           ("Expansion Tank", "Calculate Total System Fluid Content"),
                           ("Hydro-pneumatic Tank", "Calculate Drawdown"), ("Typical Specifications", "Typical Specifications"),
                           ("Demo", "Brennoval Demo"), ("Web Site", "https://www.ordwick.example"),
                           ("About", "About Brennoval")):
        item = wait_for(caption, lambda: next(
            (n for n in tree(application()) if n.get_role() == Atspi.Role.MENU_ITEM and n.get_name() == caption), None))
        Atspi.Action.do_action(item, 0)
        control(title, {Atspi.Role.FRAME})
        check_names(title)
        if caption.startswith("Compare") and control("ASME tanks").get_description() != "Show only":
            failures.append("a filter is not called by its group, but by " + control("ASME tanks").get_description())


def walk():
    control("Spec a new job")
    check_names("Start page")
    press("Spec a new job")
    write("Job ID", "2026-014")
    check_names("Job header")
    press("Next")
    button = control("Expansion Tank", {Atspi.Role.PUSH_BUTTON})
    if not button.get_description():
        failures.append("an application's button is not described")
    check_names("Application")
    press("Expansion Tank")
    for name, text in (("Total System Fluid Content", "1000"), ("Minimum Temperature", "50"), ("Maximum Temperature", "200"),
                       ("Minimum Pressure", "12"), ("Maximum Pressure", "30")):
        write(name, text)
    choose("Fluid Type", "Water", "30% Propylene Glycol")
    check_names("Conditions")
    press("Next")
    series = control("RCB - Top/Bottom System Connection")
    if series.get_description() != "Replaceable Bladder - ASME":
        failures.append("a series is not called by its heading, but by " + series.get_description())
    press("RCB - Top/Bottom System Connection")
    check_names("Series")
    press("Next")
    control("1, RCB 500, 132.1 gal 24 X 77.25", {Atspi.Role.TABLE_CELL})
    check_names("Selection")
    walk_rows("2, RCB 300, 79.3 gal 24 X 49.5", "1, RCB 500, 132.1 gal 24 X 77.25")
    press("Next")
    control("Required Volume")
    check_names("Results")
    press("Preview")
    report = wait_for("the report", lambda: next(
        (n for n in tree(application()) if n.get_role() == Atspi.Role.DOCUMENT_FRAME and showing(n)), None))
    check_names("Viewer")
    text = Atspi.Text.get_text(report, 0, Atspi.Text.get_character_count(report))
    print("  reads:", " | ".join(text.split("\n")[:60]))
    for expected in ("2026-014", "RCB ", "Furnish and install"):
        if expected not in text:
            failures.append("the report does not read " + expected)
    press("Close")
    walk_extras()


def walk_extras():
    """Compare, the overview and the import: their tables, rows, curve and filters tell what they are."""
    press("Compare")
    control("Models that answer the conditions", {Atspi.Role.TREE, Atspi.Role.TREE_TABLE, Atspi.Role.TABLE})
    for box in ("Height up to", "Floor area up to"):
        control(box, {Atspi.Role.TEXT, Atspi.Role.ENTRY})
    for box in ("ASME tanks", "What the search offers"):
        control(box, {Atspi.Role.CHECK_BOX})
    curve = wait_for("the curve", lambda: next(
        (n for n in tree(application()) if showing(n) and (n.get_name() or "").startswith("Pressure over water")), None))
    print("  curve:", spoken(curve))
    check_names("Compare")
    press("Close")
    control("Required Volume")
    press("Overview")
    control("Tanks of the job", {Atspi.Role.TREE, Atspi.Role.TREE_TABLE, Atspi.Role.TABLE})
    row = control("2026-014.1, Expansion Tank, RCB 500, 1, 132.1 gal, Sized", {Atspi.Role.TABLE_CELL})
    print("  row:", spoken(row))
    check_names("Overview")
    press("Extras")
    press("Import conditions...")
    control("Lines as they will be stored", {Atspi.Role.TREE, Atspi.Role.TREE_TABLE, Atspi.Role.TABLE})
    check_names("Import")
    open_the_others()


def main():
    program = os.path.abspath(sys.argv[1])
    with tempfile.TemporaryDirectory() as home:
        environment = {"HOME": home, "PATH": os.environ["PATH"], "DISPLAY": os.environ["DISPLAY"], "LC_ALL": "C.UTF-8",
                       "DBUS_SESSION_BUS_ADDRESS": os.environ["DBUS_SESSION_BUS_ADDRESS"], "XDG_RUNTIME_DIR": home,
                       "XDG_DATA_DIRS": home,  # no browser is registered there: the program shows the web in its own window
                       "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "QT_QPA_PLATFORM": "xcb"}
        if "XAUTHORITY" in os.environ:
            environment["XAUTHORITY"] = os.environ["XAUTHORITY"]
        subprocess.run([program + "/brennoval-install"], env=environment, check=True, stdout=subprocess.DEVNULL)
        for folder, _, names in os.walk(home):
            if "BrennovalUserData.mdb" in names:
                data = sqlite3.connect(folder + "/BrennovalUserData.mdb")
                data.execute("UPDATE tblFirstTime SET FirstTime = 1")
                data.commit()
                data.close()
        manager = subprocess.Popen(["openbox"], env=environment, stderr=subprocess.DEVNULL)  # without one nothing has the focus
        running = subprocess.Popen([program + "/brennoval"], env=environment, stderr=subprocess.DEVNULL)
        try:
            walk()
        finally:
            for process in (running, manager):
                process.kill()
                process.wait()
    if failures:
        sys.exit("\n".join(failures))


main()
