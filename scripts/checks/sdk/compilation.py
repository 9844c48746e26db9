"""Asks the compiler about the backend's sources: with the very command that the build compiles each of them with."""

import json
import os
import re
import shlex
import subprocess
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass, replace
from pathlib import Path

import scopes

# All of ours is in namespace fernhop or in a class whose name has it; a program's main is renamed so that it has it too.
# The compiler's dump is for names that hold this text: dumping everything would take a hundred times as long.
OURS = "ernhop"
CLASS = re.compile(r"^\s*@(?:implementation|interface)\s+(\w+)(?:\s*\(\s*(\w*)\s*\))?", re.M)
WITH_VALUE = {"-o", "-c", "-MF", "-MT", "-MQ"}
DROPPED = re.compile(r"-O.|-g\d?|-fsanitize.*|-fno-sanitize.*|-M.*|-W.*")


class CompilerFailed(Exception):
    """A source does not compile; the text names it and has the compiler's message."""


@dataclass(frozen=True)
class Command:
    """How the build compiles one source: the folder it does so in, the compiler with its options, the file. `renamed` are pairs
    of a name in what the compiler prints and the name that it stands for."""

    folder: Path
    words: tuple
    file: Path
    renamed: tuple = ()

    def systemFolders(self):
        """The folders of headers that stand for the SDK's."""
        return [Path(self.folder, self.words[place + 1]).resolve() for place, word in enumerate(self.words) if word == "-isystem"]

    def run(self, *extra, file=None, feed=None):
        """What the compiler prints when it is given `extra` options, and perhaps another file ("-" is `feed`)."""
        words = [*self.words, "-w", "-Wno-everything", *extra, str(file or self.file)]
        done = subprocess.run(words, cwd=self.folder, input=feed, capture_output=True, encoding="utf-8", errors="replace", check=False,
                              env={**os.environ, "CCACHE_DISABLE": "1", "LC_ALL": "C"})
        if done.returncode != 0:
            raise CompilerFailed(f"{file or self.file}: {done.stderr.strip()[:2000]}")
        return self._named(done.stdout)

    def _named(self, text):
        names = dict(self.renamed)
        return re.sub(rf"\b(?:{'|'.join(names)})\b", lambda found: names[found[0]], text) if names else text

    def dump(self, part, **given):
        """The compiler's readable dump of the declarations whose names hold `part`."""
        return self.run("-fsyntax-only", "-Xclang", "-ast-dump", "-Xclang", f"-ast-dump-filter={part}", **given)


def commands(build, wanted):
    """The commands for the Objective-C++ sources among those that the build folder `build` knows, where `wanted(path)`."""
    database = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    found = {}
    for entry in database:
        file = Path(entry["directory"], entry["file"]).resolve()
        if file.suffix == ".mm" and wanted(file):
            found.setdefault(file, Command(Path(entry["directory"]), tuple(_options(shlex.split(entry["command"]))), file))
    return [found[file] for file in sorted(found)]


def _options(command):
    """The options that change what a source means, without those that say what is to be made of it."""
    kept, skip = [], False
    for word in command:
        if skip or word in WITH_VALUE or DROPPED.fullmatch(word):
            skip = not skip and word in WITH_VALUE
        elif not word.endswith(".mm"):
            kept.append(word)
    return kept if "ccache" not in kept[0] else kept[1:]


def hidden(name):
    """A name of ours that the dump leaves out, for what the compiler cannot dump."""
    return name.replace(OURS, "rnhop")


def trees(command, protocols):
    """The syntax trees of what is ours in one source, as the compiler's JSON has them; without our `protocols`, at which clang 14
    would crash."""
    text = command.file.read_text(encoding="utf-8", errors="replace")
    command = replace(command, renamed=(*command.renamed, *((hidden(name), name) for name in protocols)))
    renames = ["-Dmain=fernhop_main", *(f"-D{name}={hidden(name)}" for name in protocols)]
    others = {category or name for name, category in CLASS.findall(text)}
    unnamed = ["(anonymous namespace)"] if scopes.hasUnnamed(text) else []
    for part in [OURS, *unnamed, *sorted(name for name in others if OURS not in name)]:
        yield from _documents(command.run("-fsyntax-only", *renames, "-Xclang", "-ast-dump=json", "-Xclang", f"-ast-dump-filter={part}"))


def _documents(text):
    decoder, place = json.JSONDecoder(), 0
    while (place := _next(text, place)) < len(text):
        tree, place = decoder.raw_decode(text, place)
        yield tree


def _next(text, place):
    while place < len(text) and text[place].isspace():
        place += 1
    return place


def each(work, items):
    """`work` done for each of the items, as many at a time as there are processors; the results in order."""
    with ThreadPoolExecutor(os.cpu_count() or 1) as pool:
        return list(pool.map(work, items))
