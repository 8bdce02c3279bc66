#!/usr/bin/python3
"""Takes pictures of the running application: screens.py FOLDER. Runs inside with_desktop.py."""
import shutil
import subprocess
import sys
from pathlib import Path

from desktop import Application, Portal, Sim, XembedTray, icon, picture, press, stays, wait_for

LANGUAGES = {"english": "en_GB.UTF-8", "chinese": "zh_CN.UTF-8"}


def take(file):
    stays(lambda: True, 0.6)  # for fonts, animations and the first poll
    picture(file)
    print(file)


def main():
    folder = Path(sys.argv[1])
    shutil.rmtree(folder, ignore_errors=True)
    subprocess.run(["xsetroot", "-solid", "#8b95a6"], check=True)
    for language, code in LANGUAGES.items():
        for look in ("light", "dark"):
            for scenario in ("full", "paused", "waiting", "empty"):
                with Portal(look == "dark"), XembedTray(), Sim(scenario), \
                        Application({"LANG": code, "LANGUAGE": ""}) as app:
                    wait_for("the icon", icon)
                    app.open_panel()
                    take(folder / f"panel-{scenario}-{language}-{look}.png")
                    press(app.all("push button")[-2])
                    app.wait("page tab")
                    for number, tab in enumerate(app.all("page tab"), 1):
                        press(tab)
                        take(folder / f"settings-{number}-{scenario}-{language}-{look}.png")


if __name__ == "__main__":
    main()
