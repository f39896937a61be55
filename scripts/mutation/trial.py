"""Runs tests against one mutant at a time."""

import json
import os
import resource
import subprocess
import tempfile
import time
from concurrent.futures import ThreadPoolExecutor

FIRST = 12  # tests that are tried before the others: those that reach least, and so say most


class Test:
    """One test of CTest's: a filter of a Google Test program."""

    def __init__(self, entry):
        self.name = entry["name"]
        self.program, *self.arguments = entry["command"]
        properties = {p["name"]: p["value"] for p in entry["properties"]}
        self.folder = properties.get("WORKING_DIRECTORY")
        self.environment = dict(v.split("=", 1) for v in properties.get("ENVIRONMENT", []))
        self.filter = next((a.split("=", 1)[1] for a in self.arguments if "filter" in a), None)
        self.seconds = 0.0
        self.reached = frozenset()


def all_tests(build):
    listed = subprocess.run(["ctest", "--test-dir", str(build), "--show-only=json-v1"], check=True,
                            capture_output=True, text=True).stdout
    entries = [e for e in json.loads(listed)["tests"] if e.get("command")]
    tests = [Test(entry) for entry in entries]
    return [t for t in tests if t.filter and os.access(t.program, os.X_OK)]


def limited(seconds):
    """For a child: an endless loop or an endless list ends by itself."""
    def limit():
        resource.setrlimit(resource.RLIMIT_CPU, (int(seconds), int(seconds) + 1))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        resource.setrlimit(resource.RLIMIT_DATA, (6 << 30, 6 << 30))
        os.setsid()
    return limit


def run(tests, variables, cpu_seconds):
    """Runs tests of one program in one process: whether they pass."""
    environment = {**os.environ, **tests[0].environment, **variables}
    environment["GTEST_FILTER"] = ":".join(t.filter for t in tests)
    command = [tests[0].program, "--gtest_fail_fast", "--gtest_brief=1"]
    child = subprocess.Popen(command, cwd=tests[0].folder, env=environment, stdin=subprocess.DEVNULL,
                             stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                             preexec_fn=limited(cpu_seconds))
    try:
        return child.wait(timeout=cpu_seconds * 6 + 30) == 0
    except subprocess.TimeoutExpired:
        os.killpg(child.pid, 9)  # the group that it leads
        child.wait()
        return False


class Trial:
    def __init__(self, build, count, jobs):
        self.count = count
        self.pool = ThreadPoolExecutor(jobs)
        self.tests = all_tests(build)
        self.alone = set()  # programs whose tests need a process each

    def reach(self):
        """Learns which tests pass, how long they take and which mutants each of them reaches."""
        self.tests = [t for t in self.pool.map(self.reach_of, self.tests) if t is not None]
        programs = {}
        for test in self.tests:
            programs.setdefault(test.program, []).append(test)
        for program, passed in zip(programs, self.pool.map(self.runs_whole, programs.values())):
            if not passed:
                self.alone.add(program)
        self.by_mutant = [[] for _ in range(self.count)]
        for test in self.tests:
            for number in test.reached:
                self.by_mutant[number].append(test)

    def reach_of(self, test):
        with tempfile.NamedTemporaryFile() as file:
            file.truncate(max(self.count, 1))
            begin = time.monotonic()
            passed = run([test], {"ZANTO_MUTANT_REACHED": file.name}, 120)
            test.seconds = time.monotonic() - begin
            test.reached = frozenset(i for i, byte in enumerate(file.read()) if byte)
        if not passed:
            print(f"mutants: left out, fails without a mutant: {test.name}", flush=True)
        return test if passed else None

    def runs_whole(self, tests):
        return run(tests, {}, 600)

    def killer(self, mutant):
        """The name of the test that fails with a mutant, or None."""
        tests = sorted(self.by_mutant[mutant.number], key=lambda t: (len(t.reached), t.seconds))
        for group in self.groups(tests):
            failed = self.failing(group, mutant)
            if failed:
                return failed
        return None

    def groups(self, tests):
        """What runs together: tests of one program, the most telling ones before the others."""
        for part in (tests[:FIRST], tests[FIRST:]):
            programs = {}
            for test in part:
                key = test.name if test.program in self.alone else test.program
                programs.setdefault(key, []).append(test)
            yield from programs.values()

    def failing(self, group, mutant):
        variables = {"ZANTO_MUTANT": str(mutant.number)}
        seconds = sum(t.seconds for t in group) * 4 + 10
        if run(group, variables, seconds):
            return None
        if len(group) == 1:
            return group[0].name
        # In company a test may fail for its neighbours: what kills a mutant does so alone.
        for test in group:
            if not run([test], variables, test.seconds * 4 + 10):
                return test.name
        return None

    def judge(self, mutants, told):
        """Tries all mutants; `told` hears of each as it ends."""
        def one(mutant):
            killer = self.killer(mutant)
            told(mutant, killer)
            return killer
        return list(self.pool.map(one, mutants))
