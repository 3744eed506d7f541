"""docs.py ROOT: checks what the documents promise.

Links and anchors lead somewhere, every picture exists and is shown, every document can be reached
from docs/README.md, code samples compile, and files, presets, pages, tests and names of the
library that the text mentions exist.

A code block in C or C++ has a comment before it, on the line above its fence:
    <!-- sample NAME -->   compiled, together with the other blocks of that name in the document;
                           further lines of the comment stand before the block in what is compiled,
                           or around it, if one of them is "..."
    <!-- excerpt -->       not compiled: a piece that makes no sense by itself
Names of the library that an example makes up are listed in <!-- invented: NAME... -->.
"""

import concurrent.futures
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.parsers.expat

COMPILERS = {
    "c": ["x86_64-w64-mingw32-gcc-posix", "-std=c99", "-pedantic"],
    "cpp": ["x86_64-w64-mingw32-g++-posix", "-std=c++20", "-pedantic"],
}
WARNINGS = ["-Wall", "-Wextra", "-Werror", "-Wno-unused-function", "-fsyntax-only"]

FENCE = re.compile(r"^```(\w*)\n(.*?)^```$", re.M | re.S)
MARKED = re.compile(r"<!-- (sample (\w+)|excerpt)\s*((?:(?!-->).)*)-->\n$", re.S)
LINK = re.compile(r"(!?)\[[^\]]*\]\(([^)\s]+)\)")
SPAN = re.compile(r"`([^`\n]+)`")
FOLDERS = r"bench|cmake|debugger|docs|examples|include|lib|res|scripts|src|tests|tools|xml|\.ci"
PATH = re.compile(rf"(?<![\w/.\\-])((?:{FOLDERS})/[\w./*-]*[\w*/])")
NAME = re.compile(r"\b(?:Qk[A-Z]\w+|QK_\w+|QKDLG_\w+)\b(?!\.(?:a|dll|lib|pdb|zip))")


class Checker:
    def __init__(self, root):
        self.root = root
        listed = self.git("ls-files", "--cached", "--others", "--exclude-standard").splitlines()
        self.files = {name for name in listed if (root / name).exists()}
        self.folders = {str(p) for name in self.files for p in pathlib.PurePath(name).parents}
        self.documents = sorted(name for name in self.files if name.endswith(".md"))
        self.texts = {name: (root / name).read_text() for name in self.documents}
        self.faults = []
        self.counts = dict.fromkeys(["links", "pictures", "samples", "names"], 0)
        self.linked = {}

    def git(self, *arguments):
        command = ["git", "-C", str(self.root), *arguments]
        return subprocess.run(command, check=True, capture_output=True, text=True).stdout

    def fault(self, document, text):
        self.faults.append(f"{document}: {text}")

    def run(self):
        samples = []
        for document in self.documents:
            self.check_links(document)
            self.check_names(document)
            samples += self.check_code(document)
        with concurrent.futures.ThreadPoolExecutor() as pool:
            for fault in filter(None, pool.map(lambda sample: self.compile(*sample), samples)):
                self.fault(*fault)
        self.check_pictures_shown()
        self.check_reachable()
        self.check_reports()

    # Links

    def check_links(self, document):
        targets = self.linked[document] = set()
        for picture, target in LINK.findall(without_code(self.texts[document])):
            if re.match(r"[a-z]+:", target):
                continue
            self.counts["pictures" if picture else "links"] += 1
            path, _, anchor = target.partition("#")
            file = resolve(document, path) if path else document
            if file not in self.files and file not in self.folders:
                self.fault(document, f"no such file: {target}")
            elif anchor and anchor not in anchors(self.texts.get(file, "")):
                self.fault(document, f"no such heading: {target}")
            targets.add(file)

    def check_pictures_shown(self):
        shown = set().union(*self.linked.values())
        for name in self.files:
            if name.startswith("docs/pictures/") and name not in shown:
                self.fault(name, "no document shows this picture")

    def check_reachable(self):
        reached, waiting = set(), ["docs/README.md"]
        while waiting:
            document = waiting.pop()
            if document not in reached and document in self.texts:
                reached.add(document)
                waiting.extend(self.linked[document])
        for document in self.documents:
            if document not in reached:
                self.fault(document, "not to be reached from docs/README.md")

    def check_reports(self):
        """docs/debugging.md has a row for each assertion report, and for no other."""
        document = "docs/debugging.md"
        rows = re.findall(r"^\| `([\w/]+)` \| ([\d, ]+) \|", self.texts[document], re.M)
        told = {f"{module} {line.strip()}" for module, lines in rows for line in lines.split(",")}
        sites = self.grep(r'AssertSite [a-zA-Z]+\{"[^}]*', "src/*.cpp", "lib/*.cpp", "xml/*.cpp")
        made = {site.split('"', 1)[1].replace('",', "") for site in sites}
        for site in sorted(told ^ made):
            self.fault(document, f"{'not in the sources' if site in told else 'missing'}: {site}")

    # Names

    def check_names(self, document):
        text = self.texts[document]
        invented = " ".join(re.findall(r"<!-- invented: (.*?) -->", text)).split()
        code = SPAN.findall(without_code(text)) + [block for _, block in FENCE.findall(text)]
        for piece in code:
            for path in PATH.findall(piece):
                self.counts["names"] += 1
                if not self.exists(path) and pathlib.PurePath(path).stem not in invented:
                    self.fault(document, f"no such file: {path}")
            self.check_arguments(document, piece)
            for name in NAME.findall(piece):
                self.counts["names"] += 1
                if name not in self.identifiers() and name not in invented:
                    self.fault(document, f"no such name: {name}")

    def exists(self, path):
        path = path.rstrip("/")
        if "*" in path:
            return any(pathlib.PurePath(name).match(path) for name in self.files)
        return path in self.files or path in self.folders

    def check_arguments(self, document, piece):
        known = {
            r"--preset[ =]([\w-]+)": self.presets(),
            r"--page[ =]([\w-]+)": self.pages(),
            r"--gtest_filter=([A-Za-z]\w*)": self.suites(),
            r"--target[ =]([A-Za-z]\w*)": self.identifiers(),
            r"ctest .*-R[ =]([\w.]+)": self.identifiers(),
        }
        for pattern, names in known.items():
            for name in re.findall(pattern, piece):
                self.counts["names"] += 1
                # Capitals stand for whatever the reader puts there.
                if not name.isupper() and not any(each.startswith(name) for each in names):
                    self.fault(document, f"no such name: {name} in {piece.strip()[:60]}")

    def cached(self, key, make):
        if key not in self.__dict__:
            self.__dict__[key] = make()
        return self.__dict__[key]

    def grep(self, pattern, *paths):
        arguments = ["grep", "--untracked", "-hoE", pattern, "--", *paths]
        return set(self.git(*arguments).splitlines())

    def identifiers(self):
        sources = ("*.h", "*.cpp", "*.c", "*.rs", "*.py", "*.txt", "*.cmake", "*.in", "*.natvis",
                   "*.json", ".clang-*")
        return self.cached("_identifiers", lambda: self.grep(r"[A-Za-z_][A-Za-z0-9_.]+", *sources))

    def presets(self):
        presets = json.loads((self.root / "CMakePresets.json").read_text())
        return {each["name"] for each in presets["configurePresets"]}

    def pages(self):
        return self.cached("_pages", lambda: {
            row.split('"')[1] for row in self.grep(r'^ *\{L"[a-z]+"', "examples/gallery/PageTable.cpp")})

    def suites(self):
        return self.cached("_suites", lambda: {
            test.split("(")[1] for test in self.grep(r"^TEST(_[FP])?\([A-Za-z]+", "tests/*.cpp")})

    # Code

    def check_code(self, document):
        """The samples of a document: its name, theirs, language and text."""
        samples = {}
        for match in FENCE.finditer(self.texts[document]):
            language, block = match.groups()
            if language == "xml":
                self.check_xml(document, block)
            if language not in COMPILERS or document.startswith("examples/"):
                continue
            marks = MARKED.search(self.texts[document], 0, match.start())
            if not marks:
                self.fault(document, f"a block of code without a mark: {block.splitlines()[0]}")
            elif marks.group(2):
                before, _, after = f"\n{marks.group(3)}\n".partition("\n...\n")
                piece = f"{before}\n{block}{after}"
                samples.setdefault((marks.group(2), language), []).append(piece)
        return [(document, *key, "\n".join(blocks)) for key, blocks in samples.items()]

    def check_xml(self, document, block):
        try:
            # A description has several elements at its top.
            xml.parsers.expat.ParserCreate().Parse(f"<all>{block}</all>", True)
        except xml.parsers.expat.ExpatError as error:
            self.fault(document, f"XML that does not parse: {error}")

    def compile(self, document, name, language, text):
        self.counts["samples"] += 1
        with tempfile.TemporaryDirectory() as folder:
            source = pathlib.Path(folder) / f"{name}.{language}"
            source.write_text(text)
            folders = [f"-I{self.root / folder}" for folder in ("include", "src", "")]
            command = [*COMPILERS[language], *WARNINGS, *folders, str(source)]
            result = subprocess.run(command, capture_output=True, text=True)
        if result.returncode:
            return document, f"sample {name} does not compile:\n{result.stderr[:2000]}"
        return None


def resolve(document, path):
    """A link's path from the top of the repository."""
    parts = []
    for part in (pathlib.PurePosixPath(document).parent / path).parts:
        if part == "..":
            if not parts:
                return path
            parts.pop()
        else:
            parts.append(part)
    return "/".join(parts) or "."


def without_code(text):
    return FENCE.sub("", text)


def anchors(text):
    """The anchors of a document's headings, as they are made from their words."""
    found = set()
    for heading in re.findall(r"^#+ +(.*?) *#*$", without_code(text), re.M):
        heading = LINK.sub(lambda link: link.group(0)[1:].split("]")[0], heading)
        anchor = re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")
        number, unique = 0, anchor
        while unique in found:
            number += 1
            unique = f"{anchor}-{number}"
        found.add(unique)
    return found


def main():
    checker = Checker(pathlib.Path(sys.argv[1]))
    checker.run()
    for fault in checker.faults:
        print(fault)
    counts = ", ".join(f"{count} {what}" for what, count in checker.counts.items())
    print(f"{len(checker.documents)} documents: {counts}; {len(checker.faults)} faults")
    sys.exit(1 if checker.faults else 0)


main()
