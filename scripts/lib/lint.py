"""lint.py ROOT PRESET...: runs clang-tidy over what the presets compile.

A source that several presets compile is linted as the first of them compiles it. Sources found
clean are remembered in build/lint-cache under a hash of everything that decides the outcome.
"""

import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys


def ninja_deps(build):
    """The files each object was made from, by Ninja's record: {object: [path, ...]}."""
    text = subprocess.run(
        ["ninja", "-C", str(build), "-t", "deps"], check=True, capture_output=True, text=True
    ).stdout
    deps, current = {}, None
    for line in text.splitlines():
        head = re.match(r"(\S.*): #deps \d+", line)
        if head:
            current = deps.setdefault(head.group(1), [])
        elif line.startswith("    "):
            current.append(line.strip())
    return deps


def compile_commands(root, presets):
    """Yields (source, build folder, arguments, own files it was made from), each source once."""
    seen = set()
    for preset in presets:
        build = root / "build" / preset
        deps = ninja_deps(build)
        for entry in json.loads((build / "compile_commands.json").read_text()):
            source = pathlib.Path(entry["file"])
            outside = not source.is_relative_to(root) or source.is_relative_to(root / "build")
            if outside or source in seen:
                continue
            seen.add(source)
            output, arguments = for_clang(shlex.split(entry["command"]))
            made_from = deps.get(output)
            if made_from is None:
                sys.exit(f"lint: preset {preset} has not compiled {source}")
            files = {(build / name).resolve() for name in made_from} | {source}
            own = sorted(f for f in files if f.is_relative_to(root))
            yield source, build, arguments, own


def for_clang(command):
    """The object that a compiler command makes, and the command's arguments for clang-tidy."""
    # clang's own command wraps the arguments of its precompiled header, which is not used here.
    arguments, output, rest = [], None, (each for each in command[1:] if each != "-Xclang")
    for argument in rest:
        if argument == "-o":
            output = next(rest)
        elif argument == "-c":
            next(rest)
        elif argument == "-include-pch":
            next(rest)
        elif argument == "-include":
            # Given this way, clang takes the header itself, not its precompiled form beside it.
            arguments += ["-Xclang", "-include", "-Xclang", next(rest)]
        else:
            arguments.append(argument)
    # What g++ is told and clang does not know would be reported as an error.
    return output, [*arguments, "-Wno-unknown-warning-option"]


def outcome_key(arguments, files, rules):
    digest = hashlib.sha256(rules + "\0".join(arguments).encode())
    for name in files:
        digest.update(str(name).encode() + b"\0" + hashlib.sha256(name.read_bytes()).digest())
    return digest.hexdigest()


def lint(source, build, arguments):
    return subprocess.run(
        ["clang-tidy", "--quiet", str(source), "--", *arguments],
        cwd=build,
        stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        text=True,
        check=False,
    )


def main():
    root, presets = pathlib.Path(sys.argv[1]).resolve(), sys.argv[2:]
    cache = root / "build" / "lint-cache"
    cache.mkdir(parents=True, exist_ok=True)
    version = subprocess.run(["clang-tidy", "--version"], check=True, capture_output=True).stdout
    settings = [root / ".clang-tidy", *sorted(root.glob("[a-z]*/.clang-tidy"))]
    rules = version + b"".join(name.read_bytes() for name in settings)

    current, pending, sources = set(), {}, 0
    for source, build, arguments, files in compile_commands(root, presets):
        sources += 1
        mark = cache / outcome_key(arguments, files, rules)
        current.add(mark)
        if not mark.exists():
            pending[source] = (build, arguments, mark)
    if not sources:
        sys.exit("lint: the presets compile no source")
    print(f"lint: {sources} sources, {len(pending)} of them new or changed", flush=True)

    faulty = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        runs = {
            pool.submit(lint, source, build, arguments): (source, mark)
            for source, (build, arguments, mark) in pending.items()
        }
        for run in concurrent.futures.as_completed(runs):
            source, mark = runs[run]
            if run.result().returncode == 0:
                mark.touch()
            else:
                faulty += 1
                print(f"lint: {source.relative_to(root)}\n{run.result().stdout}", flush=True)
    for stale in set(cache.iterdir()) - current:
        stale.unlink()
    sys.exit(1 if faulty else 0)


if __name__ == "__main__":
    main()
