"""Runs tests against one mutant at a time."""

import collections
import functools
import itertools
import json
import os
import pathlib
import pickle
import re
import resource
import subprocess
import tempfile
import threading
from concurrent.futures import ThreadPoolExecutor

STAGES = (10, 40, 160)  # how many tests are tried at a time, the most telling ones first
WORD = re.compile(r"[A-Z]?[a-z]{2,}")
BEGUN = re.compile(r"^\[ RUN      \] (\S+)", re.M)


def words_of(text):
    """The words of names such as `hotSpotDrawer`, without endings that vary."""
    return {word.lower().rstrip("s") for word in WORD.findall(text)}


class Test:
    """One test of a Google Test program."""

    def __init__(self, entry, name, alone):
        self.name = name
        self.program = entry["command"][0]
        properties = {p["name"]: p["value"] for p in entry["properties"]}
        self.folder = properties.get("WORKING_DIRECTORY")
        self.environment = dict(v.split("=", 1) for v in properties.get("ENVIRONMENT", []))
        for change in properties.get("ENVIRONMENT_MODIFICATION", []):
            variable, _, value = change.partition("=set:")
            self.environment[variable] = value
        # Tests of one key may share a process.
        self.key = (self.program, name if alone else "")
        self.source = ""  # the file that it is written in, as the compiler was told
        self.seconds = 0.0  # of processor time
        self.reached = frozenset()

    @functools.cached_property
    def words(self):
        return words_of(self.name)

    @property
    def suite(self):
        return self.name.rsplit(".", 1)[0]

    def nearness(self, file):
        """How near to a mutated file the test is written: 0 is beside it."""
        path = pathlib.PurePath(file)
        if pathlib.PurePath(self.source).name.startswith(path.stem):
            return 0
        return 1 if f"/{path.parent}/" in self.source else 2


def sources_of(program):
    """Of every test of a program by its name: the file that it is written in."""
    with tempfile.NamedTemporaryFile(suffix=".json") as file:
        subprocess.run([program, "--gtest_list_tests", f"--gtest_output=json:{file.name}"],
                       check=True, stdout=subprocess.DEVNULL)
        suites = json.loads(file.read())["testsuites"]
    return {f"{suite['name']}.{test['name']}": test["file"]
            for suite in suites for test in suite["testsuite"]}


def all_tests(build):
    listed = subprocess.run(["ctest", "--test-dir", str(build), "--show-only=json-v1"], check=True,
                            capture_output=True, text=True).stdout
    tests, sources = [], {}
    for entry in json.loads(listed)["tests"]:
        command = entry.get("command", [])
        picked = next((a.split("=", 1)[1] for a in command if "gtest_filter" in a), None)
        if not picked or not os.access(command[0], os.X_OK):
            continue
        if command[0] not in sources:
            sources[command[0]] = sources_of(command[0])
        for name, source in sources[command[0]].items():
            if name == picked or (picked.endswith(".*") and name.startswith(picked[:-1])):
                tests.append(Test(entry, name, name == picked))
                tests[-1].source = source
    return tests


def limited(seconds):
    """For a child: an endless loop or an endless list ends by itself."""
    def limit():
        resource.setrlimit(resource.RLIMIT_CPU, (int(seconds), int(seconds) + 1))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        resource.setrlimit(resource.RLIMIT_DATA, (6 << 30, 6 << 30))
        os.setsid()
    return limit


def first_failure(tests, variables, cpu_seconds):
    """Runs tests of one key in one process: the name of the one that fails first, or None; and the
    seconds of processor time."""
    environment = {**os.environ, **tests[0].environment, **variables}
    environment["GTEST_FILTER"] = ":".join(t.name for t in tests)
    with tempfile.TemporaryFile() as output:
        child = subprocess.Popen([tests[0].program, "--gtest_fail_fast", "--gtest_color=no"],
                                 cwd=tests[0].folder, env=environment, stdin=subprocess.DEVNULL,
                                 stdout=output, stderr=subprocess.DEVNULL,
                                 preexec_fn=limited(cpu_seconds))
        timer = threading.Timer(cpu_seconds * 5 + 10, os.killpg, (child.pid, 9))  # its own group
        timer.start()
        _, status, usage = os.wait4(child.pid, 0)
        timer.cancel()
        child.returncode = os.waitstatus_to_exitcode(status)
        seconds = usage.ru_utime + usage.ru_stime
        if child.returncode == 0:
            return None, seconds
        output.seek(0)
        begun = BEGUN.findall(output.read().decode(errors="replace"))
        return failed_of(begun, tests), seconds


def failed_of(begun, tests):
    """With fail-fast the last test that began is the one that failed."""
    names = {t.name for t in tests}
    return next((name for name in reversed(begun) if name in names), tests[0].name)


def limit_for(tests):
    return sum(t.seconds for t in tests) * 4 + 5


class Trial:
    """`seconds`: how long the tests of one mutant may take before it counts as surviving."""

    def __init__(self, build, fingerprint, count, jobs, seconds):
        self.build = build
        self.fingerprint = fingerprint
        self.count = count
        self.seconds = seconds
        self.pool = ThreadPoolExecutor(jobs)
        self.tests = all_tests(build)
        self.killers = collections.defaultdict(collections.Counter)  # of each file
        self.lock = threading.Lock()

    def reach(self):
        """Learns which tests pass, how long they take and which mutants each of them reaches; what
        it learnt about the same sources before is kept beside the programs."""
        kept = self.build / "reach.pickle"
        known = pickle.loads(kept.read_bytes()) if kept.exists() else (None, None)
        if known[0] == self.fingerprint:
            self.tests, self.by_mutant = known[1]
            return
        self.learn_reach()
        kept.write_bytes(pickle.dumps((self.fingerprint, (self.tests, self.by_mutant))))

    def learn_reach(self):
        self.tests = [t for t in self.pool.map(self.reach_of, self.tests) if t is not None]
        programs = collections.defaultdict(list)
        for test in self.tests:
            programs[test.key].append(test)
        shared = [tests for tests in programs.values() if len(tests) > 1]
        for tests, failed in zip(shared, self.pool.map(lambda t: first_failure(t, {}, 600), shared)):
            for test in tests if failed[0] else []:
                test.key = (test.program, test.suite)
        self.by_mutant = [[] for _ in range(self.count)]
        for test in self.tests:
            for number in test.reached:
                self.by_mutant[number].append(test)

    def reach_of(self, test):
        with tempfile.NamedTemporaryFile() as file:
            file.truncate(max(self.count, 1))
            failed, test.seconds = first_failure([test], {"ZANTO_MUTANT_REACHED": file.name}, 120)
            test.reached = frozenset(i for i, byte in enumerate(file.read()) if byte)
        if failed:
            print(f"mutants: left out, fails without a mutant: {test.name}", flush=True)
        return None if failed else test

    def in_order(self, mutant):
        """The tests that reach a mutant, the most telling ones first: what killed others of its
        file, what shares words with its line, what is written beside its file; then one test of
        each suite after the other, because suites look at different things."""
        with self.lock:
            killers = dict(self.killers[mutant.file].most_common(8))
        words = words_of(mutant.source_line)
        alike, rounds = {}, collections.Counter()
        tests = sorted(self.by_mutant[mutant.number], key=lambda t: (len(t.reached), t.seconds))
        for test in tests:
            alike[test] = len(words & test.words)
        telling = sorted(tests, key=lambda t: (-killers.get(t.name, 0), -alike[t]))[:16]
        telling += sorted(set(tests) - set(telling), key=lambda t: t.nearness(mutant.file))[:16]
        rest = []
        for test in tests:
            if test not in telling:
                rest.append((rounds[test.suite], len(rest), test))
                rounds[test.suite] += 1
        return telling + [test for _, _, test in sorted(rest, key=lambda r: r[:2])]

    def killer(self, mutant):
        """The name of the test that fails with a mutant, or None."""
        for group in self.groups(self.affordable(self.in_order(mutant))):
            failed = self.failing(group, mutant)
            if failed:
                with self.lock:
                    self.killers[mutant.file][failed] += 1
                return failed
        return None

    def affordable(self, tests):
        """As many of the first ones as `seconds` allow, but one at least."""
        ends = itertools.accumulate(t.seconds for t in tests)
        return [t for t, end in zip(tests, ends) if end - t.seconds <= self.seconds]

    def groups(self, tests):
        """What runs together, in the order in which it is tried."""
        ends = [*STAGES, len(tests)]
        for begin, end in zip((0, *STAGES), ends):
            together = collections.defaultdict(list)
            for test in tests[begin:end]:
                together[test.key].append(test)
            yield from together.values()

    def failing(self, group, mutant):
        variables = {"ZANTO_MUTANT": str(mutant.number)}
        failed, _ = first_failure(group, variables, limit_for(group))
        if failed is None or len(group) == 1:
            return failed
        # In company a test may fail for its neighbours: what kills a mutant does so alone.
        for test in sorted(group, key=lambda t: t.name != failed):
            if first_failure([test], variables, limit_for([test]))[0]:
                return test.name
        return None

    def judge(self, mutants, told):
        """Tries all mutants; `told` hears of each as it ends."""
        def one(mutant):
            killer = self.killer(mutant)
            told(mutant, killer)
            return killer
        return list(self.pool.map(one, mutants))
