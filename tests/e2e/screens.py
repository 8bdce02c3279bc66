#!/usr/bin/python3
"""Takes pictures of the running application: screens.py FOLDER. Runs inside with_desktop.py."""
import shutil
import subprocess
import sys
from pathlib import Path

from desktop import Application, Portal, Sim, XembedTray, geometry, picture, pointer, tray_icons, wait_for, windows

STATES = ["full", "paused", "waiting", "empty", "transfer"]
LANGUAGES = {"english": "en_US.UTF-8", "chinese": "zh_CN.UTF-8"}


def take(folder, scenario, language, dark):
    name = f"panel-{scenario}-{language}-{'dark' if dark else 'light'}.png"
    with Portal(dark), XembedTray(), Sim(scenario):
        with Application(env={"LANG": LANGUAGES[language], "LANGUAGE": ""}) as application:
            icon = wait_for("the icon", lambda: tray_icons())[0]
            x, y, width, height = geometry(icon)
            pointer(x + width // 2, y + height // 2)
            panel = wait_for("the panel", lambda: [w for w in windows(pid=application.pid) if w != icon])[0]
            wait_for("the panel's contents", lambda: geometry(panel)[3] > 100)
            subprocess.run(["sleep", "0.5"], check=True)
            picture(folder / name)
    print(folder / name)


def main():
    folder = Path(sys.argv[1])
    shutil.rmtree(folder, ignore_errors=True)
    subprocess.run(["xsetroot", "-solid", "#8b95a6"], check=False)
    for language in LANGUAGES:
        for dark in (False, True):
            for scenario in STATES:
                take(folder, scenario, language, dark)


if __name__ == "__main__":
    main()
