# SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""One round of each kind of torture: the program is started, something is done to it, and what is left is looked at."""
import collections
import os
import random
import select
import shutil
import signal
import sqlite3
import subprocess
import time

from inspection import Copies, Loss, is_hot, steps_in
from models import MODELS

PATIENCE = 60  # seconds until a program that says nothing counts as hung
ROUNDS_PER_FOLDER = 20
BIRTH = 0.04  # seconds in which a program starts and makes its database, more or less


class Program:
    """The program at work on one scene, as told by its output."""

    def __init__(self, command, scene, folder, first):
        self.process = subprocess.Popen([*command, scene, folder, str(first)], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.rest = b""
        self.ready, self.steps, self.failure = False, first, None

    def take(self, received):
        """Understands all whole lines."""
        *lines, self.rest = (self.rest + received).split(b"\n")
        for line in lines:
            word, _, value = line.decode().partition(" ")
            if word == "ready":
                self.ready = True
            elif word == "done":
                self.steps = int(value) + 1
            elif word == "failed":
                self.failure = value

    def wait(self, reached, seconds=PATIENCE):
        """Until `reached()`; False when the time is over."""
        end = time.monotonic() + seconds
        while not reached():
            if not select.select([self.process.stdout], [], [], max(0, end - time.monotonic()))[0]:
                return False
            received = os.read(self.process.stdout.fileno(), 65536)
            if not received:
                raise Loss(f"the program ended by itself: {self.process.communicate()[1].decode(errors='replace')}")
            self.take(received)
        return True

    def go_on(self):
        """Lets a failed step be tried again; it must succeed now."""
        self.failure = None
        before = self.steps
        self.process.stdin.write(b"again\n")
        self.process.stdin.flush()
        if not self.wait(lambda: self.failure or self.steps > before):
            raise Loss("the program does not go on")
        if self.failure:
            raise Loss(f"the step fails though nothing stands in its way: {self.failure}")

    def kill(self):
        ended = self.process.poll()
        self.process.send_signal(signal.SIGKILL)
        received, complaint = self.process.communicate()
        self.take(received)
        if ended is not None or complaint:
            raise Loss(f"the program ended by itself ({ended}): {complaint.decode(errors='replace')}")


class Scene:
    """A scene, the folder it stands in, and how far it has come there."""

    def __init__(self, name, command, places):
        self.name, self.command, self.places = name, command, places
        self.model = MODELS[name]()
        self.figures = collections.Counter()
        self.template = places.make("template", small=True)
        self.model.furnish(self.template)
        subprocess.run([*command, name, self.template, "0", "0"], check=True, stdout=subprocess.DEVNULL)
        self.folder, self.rounds, self.spans = None, 0, {}

    @property
    def span(self):
        """How long two steps take, more or less; disks differ."""
        place = self.folder.parent
        if place not in self.spans:
            trial = shutil.copytree(self.template, place / "trial")
            begun = time.monotonic()
            subprocess.run([*self.command, self.name, trial, "0", "4"], check=True, stdout=subprocess.DEVNULL)
            self.spans[place] = min(1.5, max(0.01, (time.monotonic() - begun) / 2))
            shutil.rmtree(trial)
        return self.spans[place]

    def renew(self, empty=False):
        """A new folder, as it is before the first step."""
        if self.folder:
            shutil.rmtree(self.folder)
        self.folder = self.places.make(self.name)
        if not empty:
            shutil.copytree(self.template, self.folder, dirs_exist_ok=True)
        self.steps, self.born = 0, not empty
        self.source = self.bytes_of_source()
        self.copies = Copies(self.folder)

    def bytes_of_source(self):
        source = self.folder / "import.adi"
        return (source.read_bytes(), source.stat().st_mtime_ns) if source.exists() else None

    def start(self, ready):
        program = Program(self.command, self.name, self.folder, self.steps)
        if ready and not program.wait(lambda: program.ready):
            raise Loss("the program does not begin")
        return program

    def look(self, program, under_way):
        """Every announced step is there, the one `under_way` whole or not at all, and nothing else."""
        path, journal = self.folder / "base0.mdb", self.folder / "base0.mdb-journal"
        self.figures["announced"] += program.steps - self.steps
        self.steps = program.steps
        if not path.exists():
            if self.born or self.steps:
                raise Loss("the database is gone")
            self.figures["unborn"] += 1
            return
        self.born = True
        self.figures["hot"] += is_hot(journal)
        if self.rounds % 2 and under_way:  # every other time our own store is the first to open the file
            answer = subprocess.run([*self.command, "check", self.folder], capture_output=True, text=True, check=False)
            if answer.stdout.strip() != "ok":
                raise Loss(f"the store refuses the file: {answer.stdout}{answer.stderr}")
        candidates = [self.steps, self.steps + 1] if under_way else [self.steps]
        found = steps_in(path, self.model, candidates)
        if is_hot(journal):
            raise Loss("a hot journal stays beside the file")
        if self.bytes_of_source() != self.source:
            raise Loss("the imported file has changed")
        if self.name == "copy":
            self.figures["copies"] += self.copies.check(self.model, found)
        self.figures["unannounced"] += found - self.steps
        self.steps = found

    def failed(self, program, kind):
        """The program has told a failure: it must be the right one, and the log as it was."""
        if program.failure.split(" ")[0] != kind:
            raise Loss(f"told as {program.failure} instead of {kind}")
        self.figures["told"] += 1
        self.look(program, under_way=False)


def pause(span):
    time.sleep(random.uniform(0, span))


def await_journal(scene):
    """Until one of the next transactions writes, which is a small part of a long step."""
    journal = scene.folder / "base0.mdb-journal"
    late = time.monotonic() + 2 * scene.span
    for there in [True, False] * random.randrange(3) + [True]:
        while journal.exists() != there and time.monotonic() < late:
            time.sleep(0.0002)


def end(scene, program):
    """The work goes on after a trouble, and is then killed like any other."""
    if random.random() < 0.5:
        pause(scene.span)
    else:
        await_journal(scene)
        pause(min(scene.span, 0.02))
    program.kill()
    scene.look(program, under_way=True)


def kill_round(scene):
    program = scene.start(ready=scene.born)
    if not scene.born:
        pause(BIRTH)
    end(scene, program)


def full_round(scene):
    """The disk fills up at any moment, room for a few pages left over or none."""
    program = scene.start(ready=True)
    pause(scene.span)
    scene.places.fill(random.choice([0, random.randrange(1 << 14), random.randrange(1 << 18)]))
    try:
        late = time.monotonic() + PATIENCE
        while not program.wait(lambda: program.failure, random.uniform(0, scene.span)):
            scene.places.fill(0)  # again and again: what a journal gives back is room for the next one
            if time.monotonic() > late:
                raise Loss("a full disk is not told")
        scene.failed(program, "Full")
    finally:
        scene.places.empty()
    program.go_on()
    end(scene, program)


HOLDS = {"writer": ["BEGIN EXCLUSIVE"], "reservation": ["BEGIN IMMEDIATE"],
         "reader": ["BEGIN", "SELECT count(*) FROM Tabla1"]}


def lock_round(scene):
    """Another process holds the file for a moment, now and then for longer than the program waits."""
    program = scene.start(ready=True)
    pause(scene.span)
    other = sqlite3.connect(scene.folder / "base0.mdb", isolation_level=None, timeout=PATIENCE)
    for statement in random.choice(list(HOLDS.values())):
        other.execute(statement).fetchall()
    time.sleep(random.uniform(1.6, 2.2) if random.random() < 0.1 else random.uniform(0, 0.1))
    before = program.steps
    other.execute("COMMIT")
    other.close()
    if not program.wait(lambda: program.failure or program.steps > before + 1):
        raise Loss("the program hangs after a lock")
    if program.failure:
        scene.failed(program, "Locked")
        program.go_on()
    end(scene, program)


def readonly_round(scene):
    """Nothing can be made or deleted in the folder from some moment on."""
    program = scene.start(ready=True)
    pause(scene.span)
    scene.folder.chmod(0o555)
    try:
        if not program.wait(lambda: program.failure):
            raise Loss("a read-only folder is not told")
        scene.failed(program, "ReadOnly")
    finally:
        scene.folder.chmod(0o755)
    program.go_on()
    end(scene, program)


def torture(scene, fault, rounds):
    """The figures of so many rounds."""
    scene.figures.clear()
    begun = time.monotonic()
    for index in range(rounds):
        if index % ROUNDS_PER_FOLDER == 0 or scene.steps > scene.model.most:
            scene.renew(empty=fault == "kill" and scene.name == "store")
        scene.rounds = index
        FAULTS[fault](scene)
    return {**scene.figures, "rounds": rounds, "seconds": time.monotonic() - begun}


FAULTS = {"kill": kill_round, "full": full_round, "lock": lock_round, "readonly": readonly_round}
