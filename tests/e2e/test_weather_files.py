#!/usr/bin/python3
"""The real executable gets through whatever lies where its files should: it starts, answers its user, keeps what it
shows, and goes on by itself when the fault is over. Seven programs at a time, each in a home of its own."""
import contextlib
import os
import resource
import shutil
import stat
import subprocess
import threading
import unittest
from pathlib import Path

from desktop import HOME, node, press, wait_for
from weather import Service, Witness, check_pulse

# Root reads and writes past all permissions; without its privileges it is a user like any other.
UNPRIVILEGED = ["setpriv", "--bounding-set=-all", "--inh-caps=-all"] if os.geteuid() == 0 else []


def sparse(path):
    with path.open("wb") as file:
        file.truncate(1 << 30)


def unreadable(path):
    path.write_text("secret\n")
    path.chmod(0)


SHOWN = ("/api/status", "/api/history")  # by the panel


def device(name, major, minor):
    """A link to a device, for root to one of its own making: it could replace those of the system."""
    def make(path):
        target = Path("/dev") / name
        if os.geteuid() == 0:
            target = path.with_name(f"{path.name} {name}")
            os.mknod(target, stat.S_IFCHR | 0o666, os.makedev(major, minor))
        path.symlink_to(target)
    return make


# What may lie in a file's place.
KINDS = {
    "nothing": lambda path: None,
    "a folder": Path.mkdir,
    "a pipe": os.mkfifo,
    "a link to nowhere": lambda path: path.symlink_to(path.with_name("nowhere")),
    "a link to zeros": device("zero", 1, 5),
    "a link to the terminal": device("tty", 5, 0),
    "a gigabyte": sparse,
    "rubbish": lambda path: path.write_bytes(b"{\0\xff\"" + bytes(range(256)) * 16),
    "an unreadable file": unreadable,
}


class Home:
    def __init__(self, name):
        self.path = HOME / name.replace("/", " ")
        self.config, self.runtime = self.path / ".config", self.path / "runtime"
        self.connection = self.path / "Library/Application Support/Quorbit"
        self.defaults = self.config / "Quorbit/settings.json"
        for folder in (self.defaults.parent, self.config / "gtk-3.0", self.config / "gtk-4.0", self.runtime):
            folder.mkdir(parents=True)
        self.runtime.chmod(0o700)
        self.env = {"HOME": str(self.path), "XDG_CONFIG_HOME": str(self.config), "XDG_RUNTIME_DIR": str(self.runtime),
                    "XDG_DATA_HOME": str(self.path / ".local/share")}
        self.wrapper = list(UNPRIVILEGED)


class Fault:
    """What is wrong before the start and, from `strike` to `lift`, with the connection files while the program runs."""

    alone = False   # further starts find no place to meet the first
    expected = ""   # on standard error

    def prepare(self, home):
        pass

    def strike(self, home, program):
        pass

    def lift(self, home, program):
        pass


class Kind(Fault):
    """The same thing in the place of every file."""

    def __init__(self, make):
        self.make = make

    def prepare(self, home):
        for path in (home.defaults, home.config / "gtk-3.0/settings.ini", home.config / "gtk-4.0/settings.ini"):
            self.make(path)

    def fill(self, home):
        home.connection.mkdir(parents=True)
        for name in ("ui-url", "ui-token"):
            self.make(home.connection / name)

    def strike(self, home, _program):
        shutil.rmtree(home.connection)
        self.fill(home)

    def lift(self, home, _program):
        shutil.rmtree(home.connection)


class Rewritten(Fault):
    """Written anew without pause, as no service would."""

    def strike(self, home, _program):
        self.over = threading.Event()

        def write():
            while not self.over.wait(0.0005):
                for name in ("ui-url", "ui-token"):
                    (home.connection / name).write_text("http://127.0.0.1:9/" * 50)

        self.writer = threading.Thread(target=write)
        self.writer.start()

    def lift(self, _home, _program):
        self.over.set()
        self.writer.join()


class NoDescriptors(Fault):
    expected = "too many open files|Too many open files|socket"

    def strike(self, _home, program):
        self.limits = resource.prlimit(program.pid, resource.RLIMIT_NOFILE)
        used = max(int(entry.name) for entry in Path(f"/proc/{program.pid}/fd").iterdir()) + 1
        resource.prlimit(program.pid, resource.RLIMIT_NOFILE, (used, self.limits[1]))

    def lift(self, _home, program):
        resource.prlimit(program.pid, resource.RLIMIT_NOFILE, self.limits)


class Before(Fault):
    def __init__(self, prepare, expected="", alone=False):
        self.prepare, self.expected, self.alone = prepare, expected, alone


def read_only_file(home):
    home.defaults.write_text('{"other": 1}')
    home.defaults.chmod(0o400)


def read_only_folder(home):
    read_only_file(home)
    home.defaults.parent.chmod(0o500)


def full_disk(home):
    """A file system without a free block, where the test may make one; the limit on a file's size is everywhere."""
    home.wrapper += ["prlimit", "--fsize=0"]
    if os.geteuid() == 0 and subprocess.call(["unshare", "--mount", "true"], stderr=subprocess.DEVNULL) == 0:
        script = 'mount -t tmpfs -o size=4k tmpfs "$XDG_CONFIG_HOME" && mkdir "$XDG_CONFIG_HOME/Quorbit" && ' \
                 'head -c 4096 /dev/zero >"$XDG_CONFIG_HOME/full"; exec "$@"'
        home.wrapper = ["unshare", "--mount", "sh", "-c", script, "sh", *UNPRIVILEGED]
    else:
        print("full disk: only a limit on the size of files, for want of a mount of our own")


def without(*names):
    def prepare(home):
        home.env |= dict.fromkeys(names, "")
    return prepare


def no_writing(home):
    home.runtime.chmod(0o500)
    home.path.chmod(0o500)


ROWS = {name: Kind(make) for name, make in KINDS.items()} | {
    "written without pause": Rewritten(),
    "no descriptors left": NoDescriptors(),
    "read-only defaults": Before(read_only_file),
    "a read-only folder": Before(read_only_folder),
    "a full disk": Before(full_disk),
    "files of no size": Before(lambda home: home.wrapper.extend(["prlimit", "--fsize=0"])),
    "no runtime folder": Before(without("XDG_RUNTIME_DIR"), "XDG_RUNTIME_DIR not set"),
    "no writing anywhere": Before(no_writing, "wrong permissions on runtime", alone=True),
}


class Weather(unittest.TestCase):
    def waves(self):
        names = list(ROWS)
        return [names[start:start + 7] for start in range(0, len(names), 7)]

    def test_files(self):
        for names in self.waves():
            homes = [Home(name) for name in names]
            with Service(*(home.path for home in homes)) as service, contextlib.ExitStack() as stack:
                programs = []
                for name, home in zip(names, homes):
                    ROWS[name].prepare(home)
                    programs.append(stack.enter_context(Witness(home.env, home.wrapper, ROWS[name].alone,
                                                                ROWS[name].expected)))
                self.pass_through(service, list(zip(names, homes, programs)))

    def test_without_a_service(self):
        """Nothing good to show, nothing to launch: it says so, and that is all."""
        bad = {"no home": lambda home: home.env.update(HOME="/proc/home", XDG_CONFIG_HOME="/proc/home/.config"),
               "only pipes": lambda home: Kind(os.mkfifo).fill(home),
               "only gigabytes": lambda home: Kind(sparse).fill(home)}
        with contextlib.ExitStack() as stack:
            programs = {}
            for name, spoil in bad.items():
                home = Home(f"{name}, without a service")
                spoil(home)
                programs[name] = stack.enter_context(Witness(home.env, home.wrapper, False, "启动 quorbitd 失败:"))
            for name, program in programs.items():
                with self.subTest(name):
                    program.open()
                    wait_for("the word", lambda: program.find(program.panel, "image", "Service unreachable"))
                    check_pulse(self, program.pulse(), name)
                    self.choose_language(program)
                    self.assertEqual(program.complaints(), "")
                    self.assertEqual(program.end(), 0)

    def pass_through(self, service, all_):
        up = []
        for name, home, program in all_:
            with self.subTest(name):
                program.open()
                wait_for("the state", lambda: program.number("/api/status") == service.number, 8)
                self.choose_language(program)
                up.append((name, home, program))
        service.close()
        for name, home, program in up:
            ROWS[name].strike(home, program)
        for name, home, program in up:
            with self.subTest(name):
                check_pulse(self, program.pulse(least=2.2 / len(up)), name)
        for name, home, program in up:
            with self.subTest(name):
                self.assertEqual([program.number(path) for path in SHOWN], [service.number] * 2)
        for name, home, program in up:
            ROWS[name].lift(home, program)
        service.calm()
        service.listen()
        for name, home, program in up:
            with self.subTest(name):
                for path in SHOWN:
                    wait_for(f"the news of {path}", lambda: program.number(path) == service.number, 8)
                self.assertEqual(program.complaints(), "")
                self.assertEqual(program.end(), 0)

    def choose_language(self, program):
        """What is written then, or not, must not be noticed."""
        press(program.tabs["About"])
        press(wait_for("the languages", lambda: program.find(program.settings, "combo box"))[0])
        press(wait_for("English", lambda: node(program.pid, "menu item", "English")))
        wait_for("the offer to restart", lambda: program.find(program.settings, "push button", "Restart now"), 5)


if __name__ == "__main__":
    unittest.main()
