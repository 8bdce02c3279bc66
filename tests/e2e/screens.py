#!/usr/bin/python3
"""Takes pictures of the running application: screens.py FOLDER. Runs inside with_desktop.py."""
import shutil
import subprocess
import sys
import time
from pathlib import Path

from desktop import (Application, Portal, Sim, XembedTray, application_node, geometry, nodes, picture, pointer, press,
                     tray_icons, wait_for, windows)

SHARING = ["no-permission", "needs-restart", "no-master", "empty"]  # what the tab of keyboard and mouse tells
PANELS = ["full", "paused", "waiting", "empty"]
LANGUAGES = {"english": "en_GB.UTF-8", "chinese": "zh_CN.UTF-8"}
SETTLED = 0.6  # seconds for fonts, animations and the first poll


def take_panel(file, application):
    x, y, width, height = geometry(wait_for("the icon", tray_icons)[0])
    pointer(x + width // 2, y + height // 2)
    wait_for("the panel", lambda: [w for w in windows("^Quorbit$", application.pid) if geometry(w)[3] > 100])
    time.sleep(SETTLED)
    picture(file)


def open_settings(application):
    buttons = wait_for("the panel's rows", lambda: nodes(application_node(application.pid), "push button"))
    press(buttons[-2])
    return wait_for("the tabs", lambda: nodes(application_node(application.pid), "page tab"))


def take_settings(folder, name, application):
    tabs = open_settings(application)
    for number, tab in enumerate(tabs, 1):
        press(tab)
        time.sleep(SETTLED)
        picture(folder / f"settings-{number}-{name}.png")


def take(folder, scenario, language, dark):
    name = f"{language}-{'dark' if dark else 'light'}"
    environment = {"LANG": LANGUAGES[language], "LANGUAGE": ""}
    with Portal(dark), XembedTray(), Sim(scenario), Application(env=environment) as application:
        take_panel(folder / f"panel-{scenario}-{name}.png", application)
        if scenario == "full":
            take_settings(folder, name, application)


def take_sharing(folder, scenario, language, dark):
    name = f"{language}-{'dark' if dark else 'light'}"
    environment = {"LANG": LANGUAGES[language], "LANGUAGE": ""}
    with Portal(dark), XembedTray(), Sim(scenario), Application(env=environment) as application:
        wait_for("the icon", tray_icons)
        with Application() as again:
            again.process.wait(10)
        tabs = open_settings(application)
        window = wait_for("the window", lambda: [w for w in windows(pid=application.pid) if geometry(w)[3] > 400])[0]
        subprocess.run(["xdotool", "windowmove", window, "100", "0", "windowsize", window, "580", "980"], check=True)
        press(tabs[2])
        time.sleep(SETTLED)
        picture(folder / f"sharing-{scenario}-{name}.png")


def main():
    folder = Path(sys.argv[1])
    shutil.rmtree(folder, ignore_errors=True)
    subprocess.run(["xsetroot", "-solid", "#8b95a6"], check=True)
    for language in LANGUAGES:
        for dark in (False, True):
            for scenario in PANELS:
                take(folder, scenario, language, dark)
            for scenario in SHARING:
                take_sharing(folder, scenario, language, dark)
    print("\n".join(str(file) for file in sorted(folder.iterdir())))


if __name__ == "__main__":
    main()
