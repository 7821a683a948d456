#!/usr/bin/env python3
"""Measures the start of the installer beside that of plain views, and what it takes while it runs.

    measure.py PROBE ROWS [--rounds N]

PROBE is the program startup-probe; ROWS gets one line a row, as vorn-bench writes them. hyperfine
times the start to the first frame, in turns, each time without a QML cache. Everything happens on a
virtual display of its own, once more without a display and once more with the fonts of a desktop,
in a directory that is removed again.
"""
import argparse
import contextlib
import json
import os
import shutil
import statistics
import subprocess
import tempfile
import time

GL_DRIVERS = ("/dri/", "_dri.so", "libLLVM", "libgallium", "swrast", "libGLX_mesa", "libEGL_mesa")
SETTLING = 2.0  # seconds until the pages that are created after the first frame are there
FONTS = 2000  # font files of a desktop
WATCHING = 4.5  # seconds of CPU time that are looked at; the progress page runs for about five


def urgently():
    """Keeps other work of the machine out of the measurement, where that is allowed."""
    with contextlib.suppress(OSError):
        os.sched_setscheduler(0, os.SCHED_FIFO, os.sched_param(1))


@contextlib.contextmanager
def virtual_display():
    # Without -noreset a client that comes while the server resets itself waits for ever.
    arguments = ["Xvfb", "-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp",
                 "-noreset"]
    server = subprocess.Popen(arguments, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                              text=True, preexec_fn=urgently)
    try:
        yield ":" + server.stdout.readline().strip()
    finally:
        server.terminate()
        server.wait()


class Bench:
    def __init__(self, probe, rows, home):
        self.probe = os.path.abspath(probe)
        self.rows = rows
        self.home = home
        self.environment = dict(os.environ, HOME=home, XDG_RUNTIME_DIR=home,
                                XDG_CACHE_HOME=home + "/cache", LC_ALL="C.UTF-8")

    def use(self, platform, display):
        self.environment.update(QT_QPA_PLATFORM=platform, DISPLAY=display)

    def add_fonts(self, count):
        """As many font files as a desktop has, in the home directory; fontconfig has seen them."""
        source = subprocess.run(["fc-match", "-f", "%{file}", "DejaVu Sans"], check=True,
                                stdout=subprocess.PIPE, text=True).stdout
        folder = self.home + "/.local/share/fonts"
        os.makedirs(folder)
        for number in range(count):
            os.symlink(source, f"{folder}/{number}.ttf")
        subprocess.run(["fc-cache"], env=self.environment, check=True)

    def row(self, name, value, relation="-", goal=0.0, details=""):
        print(f"{name}\t{value:.2f}\t{relation}\t{goal:g}\t{details}", file=self.rows)

    def median_times(self, rounds):
        """Milliseconds to the first frame: wall and CPU, of the yardsticks and of the installer."""
        samples = {what: [] for what in ("empty", "text", "installer")}
        processor = {what: [] for what in samples}
        report = self.home + "/hyperfine.json"
        for _ in range(rounds):
            commands = [f"{self.probe} {what} quit" for what in samples]
            subprocess.run(["timeout", "120", "hyperfine", "-N", "--warmup", "1", "--runs", "5",
                            "--prepare", f"rm -rf {self.home}/cache", "--export-json", report,
                            *commands], cwd=self.home, env=self.environment, check=True,
                           preexec_fn=urgently, stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL)
            with open(report, encoding="utf-8") as file:
                for what, result in zip(samples, json.load(file)["results"]):
                    samples[what] += result["times"]
                    processor[what].append(result["user"] + result["system"])
        return [{what: 1000 * statistics.median(times) for what, times in all_times.items()}
                for all_times in (samples, processor)]

    def output(self, what, task):
        return subprocess.run([self.probe, what, task], cwd=self.home, env=self.environment,
                              check=True, timeout=60, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, text=True).stdout

    @contextlib.contextmanager
    def running(self, what, task):
        """The process id of a probe that has drawn its first frame."""
        process = subprocess.Popen([self.probe, what, task], cwd=self.home, env=self.environment,
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        try:
            if process.stdout.readline() != "ready\n":
                raise SystemExit(f"startup-probe {what} {task}: no first frame")
            yield process.pid
        finally:
            process.kill()
            process.wait()

    def resident_megabytes(self, what, settling=SETTLING):
        with self.running(what, "stay") as pid:
            time.sleep(settling)
            with open(f"/proc/{pid}/smaps_rollup", encoding="utf-8") as file:
                kilobytes = {line.split()[0]: int(line.split()[1]) for line in file
                             if line.startswith(("Rss:", "Pss:"))}
        return kilobytes["Rss:"] / 1024, kilobytes["Pss:"] / 1024

    def gl_drivers(self):
        with self.running("installer", "stay") as pid:
            time.sleep(SETTLING)
            with open(f"/proc/{pid}/maps", encoding="utf-8") as file:
                libraries = {line.split()[-1] for line in file if "/" in line}
        return sorted(path for path in libraries if any(mark in path for mark in GL_DRIVERS))

    def processor_share(self, task, settling):
        """Percent of one core."""
        def ticks(pid):
            with open(f"/proc/{pid}/stat", encoding="utf-8") as file:
                return sum(map(int, file.read().rsplit(") ", 1)[1].split()[11:13]))

        with self.running("installer", task) as pid:
            time.sleep(settling)
            before, start = ticks(pid), time.monotonic()
            time.sleep(WATCHING)
            spent = (ticks(pid) - before) / os.sysconf("SC_CLK_TCK")
            return 100 * spent / (time.monotonic() - start)


def measure_start(bench, where, rounds, goals):
    """Goals by yardstick; one without a goal is told all the same."""
    times, processor = bench.median_times(rounds)
    for what, name in (("empty", "an empty view"), ("text", "a view with one text")):
        goal = ("<=", goals[what]) if what in goals else ("-", 0.0)
        bench.row(f"start to first frame, {where}: times {name}",
                  times["installer"] / times[what], *goal,
                  f"{times['installer']:.1f} ms against {times[what]:.1f} ms")
    bench.row(f"its CPU time, {where}: times an empty view's",
              processor["installer"] / processor["empty"],
              details=f"{processor['installer']:.1f} ms against {processor['empty']:.1f} ms")


def measure_running(bench):
    (empty, _), (installer, _) = (bench.resident_megabytes(what, 0)
                                  for what in ("empty", "installer"))
    bench.row("resident memory at the first page: times an empty view", installer / empty, "<=",
              1.4, f"{installer:.1f} MB against {empty:.1f} MB")
    (empty, empty_own), (installer, installer_own) = map(bench.resident_megabytes,
                                                         ("empty", "installer"))
    bench.row("the same with TLS and the hidden pages: times an empty view", installer / empty,
              "<=", 1.5, f"{installer:.1f} MB against {empty:.1f} MB")
    bench.row("its proportional share (PSS): times an empty view's", installer_own / empty_own,
              details=f"{installer_own:.1f} MB against {empty_own:.1f} MB")
    bench.row("QML objects before the first frame", int(bench.output("installer", "count")), "<=",
              300)
    drivers = bench.gl_drivers()
    bench.row("GL drivers in the process", len(drivers), "=", 0, " ".join(drivers))
    # The lookup of the public address is tried twice more, three seconds after each failure.
    bench.row("CPU while idle: percent of a core", bench.processor_share("stay", 25), "<=", 0.1)
    bench.row("CPU on the progress page: percent of a core",
              bench.processor_share("progress", 0.3), "<=", 3)


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("probe")
    parser.add_argument("rows")
    parser.add_argument("--rounds", type=int, default=10)
    arguments = parser.parse_args()
    memory = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
    home = tempfile.mkdtemp(prefix="vorn-start-", dir=memory)
    try:
        with virtual_display() as display, open(arguments.rows, "w", encoding="utf-8") as rows:
            bench = Bench(arguments.probe, rows, home)
            bench.use("xcb", display)
            measure_start(bench, "xcb", arguments.rounds, {"empty": 1.6, "text": 1.35})
            measure_running(bench)
            bench.use("offscreen", display)
            measure_start(bench, "offscreen", arguments.rounds, {})
            bench.use("xcb", display)
            bench.add_fonts(FONTS)
            measure_start(bench, f"xcb, {FONTS} fonts", arguments.rounds, {"text": 1.1})
    finally:
        shutil.rmtree(home)


if __name__ == "__main__":
    main()
