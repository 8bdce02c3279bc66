#!/usr/bin/python3
"""The real executable gets through whatever lies where its files should: it starts, answers its user, keeps what it
shows, and goes on by itself when the fault is over. Seven programs at a time, each in a home of its own."""
import os
import resource
import shutil
import stat
import subprocess
import threading
import unittest
from contextlib import ExitStack
from pathlib import Path

from desktop import HOME, nodes, press, wait_for
from weather import Service, Witness, check_pulse

# Root reads and writes past all permissions; without its privileges it is a user like any other.
UNPRIVILEGED = ["setpriv", "--bounding-set=-all", "--inh-caps=-all"] if os.geteuid() == 0 else []
SHOWN = ("/api/status", "/api/history")  # by the panel


class Home:
    def __init__(self, name):
        self.path = HOME / name.replace("/", " ")
        self.config, self.runtime = self.path / ".config", self.path / "runtime"
        self.connection = self.path / "Library/Application Support/Quorbit"
        self.defaults = self.config / "Quorbit/settings.json"
        for folder in (self.defaults.parent, self.config / "gtk-3.0", self.config / "gtk-4.0"):
            folder.mkdir(parents=True)
        self.runtime.mkdir(mode=0o700)
        self.env = {"HOME": str(self.path), "XDG_CONFIG_HOME": str(self.config), "XDG_RUNTIME_DIR": str(self.runtime),
                    "XDG_DATA_HOME": str(self.path / ".local/share")}
        self.wrapper = list(UNPRIVILEGED)
        self.kept = None  # what the defaults hold from beginning to end

    def keep_defaults(self):
        self.kept = '{"other": 1}'
        self.defaults.write_text(self.kept)


# What may lie in a file's place


def device(name, major, minor):
    """A link to a device, for root to one of its own making: it could replace those of the system."""
    def make(path):
        target = Path("/dev") / name
        if os.geteuid() == 0:
            target = path.with_name(f"{path.name} {name}")
            os.mknod(target, stat.S_IFCHR | 0o666, os.makedev(major, minor))
        path.symlink_to(target)
    return make


KINDS = {
    "nothing": lambda path: None,
    "a folder": Path.mkdir,
    "a pipe": os.mkfifo,
    "a link to nowhere": lambda path: path.symlink_to(path.with_name("nowhere")),
    "a link to zeros": device("zero", 1, 5),
    "a link to the terminal": device("tty", 5, 0),
    "a gigabyte": lambda path: (path.touch(), os.truncate(path, 1 << 30)),
    "rubbish": lambda path: path.write_bytes(b"{\0\xff\"" + bytes(range(256)) * 16),
    "an unreadable file": lambda path: path.touch(mode=0),
}

# Each fault prepares a home before the start, may strike the running program when it gets its number, and is lifted at
# its end.


def in_every_place(make):
    def fault(home):
        for path in (home.defaults, home.config / "gtk-3.0/settings.ini", home.config / "gtk-4.0/settings.ini"):
            make(path)
        yield
        shutil.rmtree(home.connection)
        home.connection.mkdir()
        for name in ("ui-url", "ui-token"):
            make(home.connection / name)
        yield
        shutil.rmtree(home.connection)
    return fault


def written_without_pause(home):
    """As no service would."""
    over = threading.Event()

    def write():
        while not over.wait(0.0005):
            for name in ("ui-url", "ui-token"):
                (home.connection / name).write_text("http://127.0.0.1:9/" * 50)
    yield
    writer = threading.Thread(target=write)
    writer.start()
    yield
    over.set()
    writer.join()


def no_descriptors(_home):
    pid = yield
    limits = resource.prlimit(pid, resource.RLIMIT_NOFILE)
    used = max(int(entry.name) for entry in Path(f"/proc/{pid}/fd").iterdir()) + 1
    resource.prlimit(pid, resource.RLIMIT_NOFILE, (used, limits[1]))
    yield
    resource.prlimit(pid, resource.RLIMIT_NOFILE, limits)


def before(prepare):
    def fault(home):
        yield prepare(home)
        yield
    return fault


def read_only(home):
    home.keep_defaults()
    home.defaults.chmod(0o400)


def read_only_folder(home):
    read_only(home)
    home.defaults.parent.chmod(0o500)


def full_disk(home):
    """A file system without a free block, where the test may make one; the limit on a file's size is everywhere."""
    no_size(home)
    if os.geteuid() == 0 and subprocess.call(["unshare", "--mount", "true"], stderr=subprocess.DEVNULL) == 0:
        script = 'mount -t tmpfs -o size=4k tmpfs "$XDG_CONFIG_HOME" && mkdir "$XDG_CONFIG_HOME/Quorbit" && ' \
                 f"printf %s '{home.kept}' >\"$XDG_CONFIG_HOME/Quorbit/settings.json\" && exec \"$@\""
        home.wrapper = ["unshare", "--mount", "sh", "-c", script, "sh", *UNPRIVILEGED]


def no_size(home):
    home.keep_defaults()
    home.wrapper += ["prlimit", "--fsize=0"]


def no_writing(home):
    home.runtime.chmod(0o500)
    home.path.chmod(0o500)


# The fault, and what may stand on standard error
ROWS = {name: (in_every_place(make), "") for name, make in KINDS.items()} | {
    "written without pause": (written_without_pause, ""),
    "no descriptors left": (no_descriptors, "[Tt]oo many open files|socket"),
    "read-only defaults": (before(read_only), ""),
    "a read-only folder": (before(read_only_folder), ""),
    "a full disk": (before(full_disk), ""),
    "files of no size": (before(no_size), ""),
    "no runtime folder": (before(lambda home: home.env.update(XDG_RUNTIME_DIR="")), "XDG_RUNTIME_DIR not set"),
    "no writing anywhere": (before(no_writing), "wrong permissions on runtime"),
}


class Weather(unittest.TestCase):
    def test_files(self):
        for start in range(0, len(ROWS), 7):
            with ExitStack() as stack:
                self.meet(stack, {name: (Home(name), *ROWS[name]) for name in list(ROWS)[start:start + 7]})

    def meet(self, stack, rows):
        service = stack.enter_context(Service(*(home.path for home, *_ in rows.values())))
        up = []
        for name, (home, make, expected) in rows.items():
            fault = make(home)
            next(fault)
            up.append((name, fault, stack.enter_context(Witness(home.env, home.wrapper, expected))))
        for name, _, program in up:
            with self.subTest(name):
                program.open()
        for name, _, program in up:
            with self.subTest(name):
                program.shows(service.number, "/api/status")
                self.choose_language(program)
        service.close()
        for _, fault, program in up:
            fault.send(program.pid)
        for name, _, program in up:
            with self.subTest(name):
                check_pulse(self, program.pulse(least=2.2 / len(up)), name)
                self.assertEqual([program.number(path) for path in SHOWN], [service.number] * 2)
        for _, fault, _ in up:
            next(fault, None)
        service.calm()
        service.listen()
        for home, (name, _, program) in zip((home for home, *_ in rows.values()), up):
            with self.subTest(name):
                for path in SHOWN:
                    program.shows(service.number, path)
                if home.kept:  # seen with the program's eyes, which has a disk of its own
                    folder = Path(f"/proc/{program.pid}/root{home.defaults.parent}")
                    self.assertEqual({file.name: file.read_text() for file in folder.iterdir()},
                                     {home.defaults.name: home.kept})
                self.ends_well(program)

    def test_without_a_service(self):
        """Nothing good to show, nothing to launch, no home: it says so, and that is all."""
        home = Home("no service")
        home.env |= {"HOME": "/proc/home", "XDG_CONFIG_HOME": "/proc/home/.config"}
        with Witness(home.env, home.wrapper, "启动 quorbitd 失败:") as program:
            program.open().wait("image", "Service unreachable")
            wait_for("the line", lambda: program.expected in program.printed())
            check_pulse(self, program.pulse(), "no service")
            self.choose_language(program)
            self.ends_well(program)

    def choose_language(self, program):
        """What is written then, or not, must not be noticed."""
        press(program.tabs["About"])
        press(wait_for("the languages", lambda: next(nodes(program.settings, "combo box"), None)))
        program.press("menu item", "English")
        program.wait("push button", "Restart now")

    def ends_well(self, program):
        self.assertEqual(program.complaints(), "")
        self.assertEqual(program.end(), 0)


if __name__ == "__main__":
    unittest.main()
