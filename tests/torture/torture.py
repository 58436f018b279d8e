# SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Kills, starves and locks out the program while it works, over and over, and looks at what is left.

After each trouble: every step that was announced is there with all its columns and ids, the one that was under way is
there whole or not at all, the counters agree, the file is sound, and no hot journal stays beside it. A trouble that the
program could tell was told rightly, and once it is over the same step succeeds.
"""
import argparse
import os
import pathlib
import random
import shutil
import sqlite3
import subprocess
import sys
import tempfile

from inspection import Loss
from models import MODELS
from rounds import FAULTS, Scene, torture

MEMORY = "96m"
# Root may do everything; without these two a read-only folder is one for root as well.
AS_ANYBODY = ["setpriv", "--bounding-set=-dac_override,-dac_read_search", "--"]


class Places:
    """Where folders are made: by turns in a small file system of our own, which can be filled up, and on the disk."""

    def __init__(self):
        self.disk = pathlib.Path(tempfile.mkdtemp(prefix="torture-"))
        self.memory = self.disk / "memory"
        self.memory.mkdir()
        self.small = subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={MEMORY}", "tmpfs", self.memory],
                                    capture_output=True, check=False).returncode == 0
        self.only_small, self.made = False, 0

    def make(self, name, small=False):
        small = small or self.only_small
        self.made += not small
        on_disk = self.made % 2 == 0 and not small
        return pathlib.Path(tempfile.mkdtemp(prefix=f"{name}-", dir=self.disk if on_disk else self.memory))

    def fill(self, room):
        """Leaves room for so many bytes only."""
        with open(self.memory / "filler", "ab") as filler:
            while True:
                system = os.statvfs(self.memory)
                excess = system.f_bavail * system.f_frsize - room
                if excess < system.f_frsize:
                    return
                try:
                    os.posix_fallocate(filler.fileno(), os.fstat(filler.fileno()).st_size, excess)
                except OSError:  # the program was faster
                    continue

    def empty(self):
        (self.memory / "filler").unlink(missing_ok=True)

    def keep(self, folder):
        """What is to be looked at outlives the file system."""
        kept = tempfile.mkdtemp(prefix="torture-kept-")
        shutil.copytree(folder, kept, dirs_exist_ok=True)
        return kept

    def leave(self):
        if self.small:
            subprocess.run(["umount", "--lazy", self.memory], check=False)
        shutil.rmtree(self.disk, ignore_errors=True)


def row(scene, fault, figures):
    shown = [scene, fault, *(figures.get(name, 0) for name in
                             ("rounds", "announced", "unannounced", "hot", "told", "copies", "unborn"))]
    return "| " + " | ".join(str(value) for value in shown) + f" | {figures['seconds']:.0f} |"


def run(arguments, places):
    """Prints the table; False when something was lost."""
    print("| escena | falla | vueltas | pasos anunciados | sin anunciar, enteros | diarios deshechos | avisos | copias "
          "revisadas | antes de nacer | segundos |\n" + "|---" * 10 + "|")
    anybody = subprocess.run([*AS_ANYBODY, "true"], capture_output=True, check=False).returncode == 0
    for name in arguments.scene:
        scene = Scene(name, [*(AS_ANYBODY if anybody else []), arguments.program], places)
        for fault in arguments.fault:
            if fault == "full" and not places.small or fault == "readonly" and os.geteuid() == 0 and not anybody:
                print(f"| {name} | {fault} | sin permiso para intentarlo |")
                continue
            places.only_small = places.small and fault != "kill"
            try:
                figures = torture(scene, fault, arguments.rounds)
            except (Loss, sqlite3.Error) as loss:
                print(f"script/torture: {name}, {fault}, vuelta {scene.rounds}: {loss}\n"
                      f"La carpeta queda en {places.keep(scene.folder)}", file=sys.stderr)
                return False
            print(row(name, fault, figures), flush=True)
    return True


def main():
    parser = argparse.ArgumentParser(prog="script/torture", description=__doc__)
    parser.add_argument("--rounds", type=int, default=1000, help="of each scene and fault")
    parser.add_argument("--scene", nargs="+", choices=MODELS, default=list(MODELS))
    parser.add_argument("--fault", nargs="+", choices=FAULTS, default=list(FAULTS))
    parser.add_argument("--program", required=True, help="the one to torture; without it our own is built")
    parser.add_argument("--seed", type=int, default=None, help="of the random moments")
    arguments = parser.parse_args()
    random.seed(arguments.seed)
    places = Places()
    try:
        sound = run(arguments, places)
    finally:
        places.leave()
    sys.exit(0 if sound else 1)


main()
