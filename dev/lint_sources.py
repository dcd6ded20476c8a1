#!/usr/bin/env python3
"""Runs clang-tidy over the sources named, two at a time or as many as there are processors.

A source that was found clean leaves a stamp in build/lint: the hash of its preprocessed text, its own text (comments
switch checks off) and .clang-tidy. While the hash stays, the source is not checked again. Exit status 1: findings.
"""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import shlex
import subprocess
import sys

BUILD = pathlib.Path("build")
STAMPS = BUILD / "lint"
# The analyzer's core checks run also where .clang-tidy switches them off; one of them must then not be made an error.
FATAL = "*,-clang-analyzer-core.uninitialized.Assign"
TIDY = ["clang-tidy-16", "-p", str(BUILD), "--quiet", "--extra-arg=-Wno-unknown-warning-option",
        "--extra-arg=-Wno-shadow", f"--warnings-as-errors={FATAL}"]


def compile_commands():
    """The compile command of each source, by its path below the project; a source of several targets has its first."""
    commands = {}
    for entry in json.loads((BUILD / "compile_commands.json").read_text()):
        words = shlex.split(entry["command"])
        if "-o" in words:
            at = words.index("-o")
            del words[at:at + 2]
        commands.setdefault(os.path.relpath(entry["file"]), (entry["directory"], words))
    return commands


def stamp_of(source, command):
    """The name of the stamp that says that this state of the source is clean; none where it can't be preprocessed."""
    directory, words = command
    start = next(i for i, word in enumerate(words) if word.endswith("++"))
    run = subprocess.run(["clang++-16", *words[start + 1:], "-E", "-P", "-Wno-everything"], cwd=directory,
                         capture_output=True, check=False)
    if run.returncode != 0:
        return None
    text = run.stdout + pathlib.Path(source).read_bytes() + pathlib.Path(".clang-tidy").read_bytes()
    return STAMPS / hashlib.sha256(text).hexdigest()


def check(source, command):
    """The findings of one source as text, empty when it is clean."""
    stamp = stamp_of(source, command) if command else None
    if stamp and stamp.exists():
        return ""
    run = subprocess.run([*TIDY, source], capture_output=True, text=True, check=False)
    if run.returncode != 0:
        return run.stdout + run.stderr
    if stamp:
        stamp.touch()
    return ""


def main():
    STAMPS.mkdir(parents=True, exist_ok=True)
    commands = compile_commands()
    findings = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for text in pool.map(lambda source: check(source, commands.get(os.path.normpath(source))), sys.argv[1:]):
            if text:
                findings += 1
                print(text, flush=True)
    print(f"{len(sys.argv) - 1} sources checked, {findings} with findings")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
