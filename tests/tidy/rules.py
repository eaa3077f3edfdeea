"""The rules of the code. Each takes what it judges and yields (path, line, message)."""

import re

STANDARD_HEADERS = frozenset(
    """algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv
    chrono cinttypes climits clocale cmath codecvt compare complex concepts condition_variable
    coroutine csetjmp csignal cstdarg cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar
    cwctype deque exception execution expected filesystem forward_list fstream functional future
    initializer_list iomanip ios iosfwd iostream istream iterator latch limits list locale map
    memory memory_resource mutex new numbers numeric optional ostream queue random ranges ratio
    regex scoped_allocator semaphore set shared_mutex source_location span spanstream sstream stack
    stacktrace stdexcept stop_token streambuf string string_view strstream syncstream system_error
    thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility valarray
    variant vector version""".split()
)

# What an operating system's C library has beyond the language's, taken as one group with it.
POSIX_HEADERS = re.compile(
    r"(?:sys|linux)/\w+\.h|(?:dirent|dlfcn|fcntl|poll|pthread|pwd|signal|spawn|unistd)\.h")

# Which rooms each room may include besides itself.
GROUND = ("platform", "platform/ui")
LINUX_GROUND = ("platform/linux/files", "platform/linux/system", "platform/linux/pictures")
LINUX_SHARED = (
    *LINUX_GROUND, "platform/linux/applications", "platform/linux/qt", "platform/linux/tray")
ROOMS = {
    "app": ("setup_windows", "capture", "delivery", "settings", *GROUND),
    "setup_windows": ("delivery", "settings", *GROUND),
    "capture": ("delivery", "settings", *GROUND),
    "delivery": ("settings", *GROUND),
    "settings": GROUND,
    "platform/ui": ("platform",),
    "platform": (),
    "platform/simulated": GROUND,
    "platform/macos/bridge": GROUND,
    "platform/macos/ui": ("platform/macos/bridge", *GROUND),
    "platform/macos": ("platform/macos/bridge", "platform/macos/ui", *GROUND),
    "platform/linux/files": GROUND,
    "platform/linux/system": GROUND,
    "platform/linux/pictures": GROUND,
    "platform/linux/applications": ("platform/linux/files", "platform/linux/system", *GROUND),
    "platform/linux/qt": (*LINUX_GROUND, "platform/linux/applications", *GROUND),
    "platform/linux/tray": (
        *LINUX_GROUND, "platform/linux/applications", "platform/linux/qt", *GROUND),
    "platform/linux/x11": (*LINUX_SHARED, *GROUND),
    "platform/linux/x11/overlay": (*LINUX_SHARED, "platform/linux/x11", *GROUND),
    "platform/linux": (
        *LINUX_SHARED, "platform/linux/x11", "platform/linux/x11/overlay", *GROUND),
}
# The headers of a display system, and the rooms that speak it.
DISPLAY_SYSTEMS = {
    "xcb/": ("platform/linux/x11", "platform/linux/x11/overlay"),
    "xkbcommon/": ("platform/linux/x11",),
}
PRODUCT_ROOMS = ("app", "setup_windows", "capture", "delivery", "settings")
BACKENDS = ("platform/simulated", "platform/linux", "platform/macos")
TOOLKIT_BACKENDS = ("platform/linux", "platform/macos")

# The sides of a capability: the folder that a backend keeps them in, and what its files are called.
SIDES = {
    "platform/macos": ("{}_mac",),
    "platform/linux": ("{}_linux", "{}_x11"),
    "platform/simulated": ("simulated_{}",),
}
# Interfaces of which a backend has no file of that stem, and why.
WITHOUT_A_SIDE = {
    "platform/backend.h": {
        "platform/macos": "a source alone: nobody includes it",
        "platform/linux": "a source alone: nobody includes it",
        "platform/simulated": "SimulatedDesktop is made by each test",
    },
    "platform/image.h": {
        "platform/linux": "two kinds: a captured picture, and an image of Qt's",
        "platform/simulated": "SimulatedPixels are what the simulated screens show",
    },
    "platform/ui/canvas.h": {
        "platform/linux": "windows draw on one of Qt's, overlays paint recordings",
        "platform/simulated": "CanvasRecording is portable",
    },
    "platform/ui/event_monitors.h": {"platform/linux": "LocalEventMonitors is portable"},
}

SCRIPTS = (".py", ".sh", ".cmake", "CMakeLists.txt", "run", "test")

LINE_LIMIT = 100
FUNCTION_LIMIT = 60
OBJC_FILE_LIMIT = 200


def room_of(path):
    """The innermost room that a file lies in; None outside of rooms."""
    folder = str(path.parent) + "/"
    fitting = [room for room in ROOMS if folder.startswith(room + "/")]
    return max(fitting, key=len, default=None)


def backend_of(path):
    """The backend that a file lies in; None outside of backends."""
    folder = str(path.parent) + "/"
    return next((backend for backend in BACKENDS if folder.startswith(backend + "/")), None)


def is_portable(path):
    return room_of(path) is not None and backend_of(path) not in TOOLKIT_BACKENDS


def touches_the_system(path):
    """Code that talks to a real desktop: the two backends, and the tests and measurements on it."""
    return (
        backend_of(path) in TOOLKIT_BACKENDS
        or path.parts[0] == "bench"
        or path.parts[:2] in (("tests", "linux"), ("tests", "macos"), ("tests", "contract"))
    )


def include_directions(source):
    room = room_of(source.path)
    for include in source.includes:
        place = (source.path, include.line)
        if not include.quoted:
            if is_portable(source.path) and include.path not in STANDARD_HEADERS:
                yield *place, f"<{include.path}> is not the standard library's"
            for prefix, speakers in DISPLAY_SYSTEMS.items():
                if room and include.path.startswith(prefix) and room not in speakers:
                    yield *place, f"{room} may not speak to the display system"
            continue
        included = type(source.path)(include.path)
        target = room_of(included)
        if room is None or target == room:
            continue
        if target is None:
            yield *place, f'"{include.path}" is not written from the root of the tree'
        elif target not in ROOMS[room]:
            yield *place, f"{room} may not include {target}"


def include_order(source):
    """Own header, project, toolkit, standard library: in this order, a blank line between."""
    own = str(source.path.with_suffix(".h"))

    def group(include):
        if include.quoted and include.path == own:
            return 0
        if include.quoted:
            return 1
        system = include.path in STANDARD_HEADERS or POSIX_HEADERS.fullmatch(include.path)
        return 3 if system else 2

    for before, after in zip(source.includes, source.includes[1:]):
        if any(line.lstrip().startswith("#if") for line in source.lines[before.line : after.line]):
            continue
        place = (source.path, after.line)
        if group(after) < group(before):
            yield *place, f"{after.path} stands after {before.path}; see the order of includes"
        elif group(after) != group(before) and after.line == before.line + 1:
            yield *place, f"no blank line between {before.path} and {after.path}"


# What is banned, where (a predicate on the path), and why.
def everywhere(_):
    return True


def outside_measurements(path):
    return path.parts[0] != "bench"


def outside_backends(path):
    return backend_of(path) not in TOOLKIT_BACKENDS


def in_portable_code(path):
    return is_portable(path) or not touches_the_system(path)


def in_product_rooms(path):
    return room_of(path) in PRODUCT_ROOMS


BANNED = [
    (r"\b(?:usleep|nanosleep|sleep_for|sleep_until|sleepForTimeInterval)\b|\bsleep\s*\(",
     outside_measurements, "a delay goes through MainQueue, never a sleep"),
    (r"\b(?:rand|srand|drand48|arc4random)\s*\(|\brandom_device\b",
     everywhere, "randomness comes from a seed"),
    (r"\b(?:system_clock|steady_clock|high_resolution_clock)::now\b|\bgettimeofday\b"
     r"|\bclock_gettime\b|\bstd::time\s*\(|(?<![\w.:>])time\s*\(\s*(?:NULL|nullptr|0)\s*\)",
     in_portable_code, "time is the main queue's"),
    (r"\bthrow\b|\btry\s*\{|\bcatch\s*\(", outside_backends, "failures are values"),
    (r"\.value\s*\(\s*\)|\.(?:and_then|or_else|transform_error)\s*\(",
     outside_backends, "test the value and return early"),
    (r"\bstd::(?:print|println)\b|<print>", everywhere, "not in every compiler's library"),
    (r"\bstd::move_only_function\b", everywhere, "not in every compiler's library"),
    (r"\bstd::jthread\b", everywhere, "not in every compiler's library"),
    (r"\bthread_local\b", everywhere, "no mutable statics"),
    (r"\busing\s+namespace\b(?!\s+std::\w*literals\b)",
     everywhere, "names are written out or declared one by one"),
    (r"\bstd::(?:cout|cerr|clog)\b|\bf?printf\s*\(|\bNSLog\b|\bq(?:Debug|Warning|Info)\s*\(",
     in_product_rooms, "nothing is logged"),
]


def banned_calls(source):
    for pattern, applies, why in BANNED:
        if not applies(source.path):
            continue
        for match in re.finditer(pattern, source.code):
            yield source.path, source.line_of(match.start()), f"{match.group().strip()}: {why}"


CONSTANT = re.compile(r"\bconstexpr\b|\bconst\b(?!.*[*]\s*\w+$)")
NOT_A_VARIABLE = re.compile(
    r"^(?:\[\[.*?\]\]\s*)?(?:using|typedef|namespace|class|struct|union|enum|friend|extern|template"
    r"|static_assert|return|public|private|protected|@\w+|[-+]\s*\()|\boperator\b"
)


def mutable_statics(source):
    for line, statement, kinds in source.statements_with_scope:
        declaration = re.split(r"(?<![=!<>])=(?!=)|\{", statement, maxsplit=1)[0].strip()
        text = " ".join(declaration.split())
        if NOT_A_VARIABLE.search(text) or "(" in text or CONSTANT.search(text):
            continue
        words = re.match(r"(?:static|inline|mutable|\s)*[\w:<>,*&\s]+?\s[*&]*\w+(?:\[.*\])?$", text)
        if not words:
            continue
        at_namespace = all(kind == "namespace" for kind in kinds)
        if re.search(r"\bstatic\b", text) or (at_namespace and source.path.suffix != ".m"):
            yield source.path, line, f"{text}: a mutable static"


def header_form(source):
    if not source.is_header:
        return
    if source.lines[0] != "#pragma once":
        yield source.path, 1, "a header starts with #pragma once"
    for number, line in enumerate(source.lines, 1):
        if re.match(r"\s*#\s*(?:if|ifdef|ifndef)\b", line) and backend_of(source.path) is None:
            yield source.path, number, "no conditional compilation in a portable header"


def class_comments(source):
    """Each class that a header declares says above itself what it is."""
    if not source.is_header:
        return
    for block in source.blocks:
        if any(kind != "namespace" for kind in block.depth_kinds):
            continue
        if not re.search(r"(?:^|>\s*)(?:class|@interface)\b|^@interface", block.head):
            continue
        above = block.first_line - 2
        while above >= 0 and re.match(r"\s*(?:template\b|\[\[)", source.lines[above]):
            above -= 1
        if above < 0 or not source.lines[above].lstrip().startswith("///"):
            name = " ".join(block.head.split()[:2])
            yield source.path, block.first_line, f"{name} has no /// comment"


def function_lengths(source):
    for block in source.blocks:
        length = block.last_line - block.first_line + 1
        if block.kind == "function" and length > FUNCTION_LIMIT:
            yield source.path, block.first_line, f"a function of {length} lines"


def line_lengths(source):
    for number, line in enumerate(source.lines, 1):
        if len(line) > LINE_LIMIT:
            yield source.path, number, f"{len(line)} columns"


def objc_file_lengths(source):
    count = len(source.lines) - 1
    if source.path.suffix == ".mm" and backend_of(source.path) == "platform/macos":
        if count > OBJC_FILE_LIMIT:
            yield source.path, count, f"{count} lines: too much for a file that only translates"


def leftovers(source):
    for number, line in enumerate(source.lines, 1):
        mark = re.search(r"\b(?:TO" + r"DO|FIX" + r"ME|XX" + r"X|HA" + r"CK)\b", line)
        if mark:
            yield source.path, number, f"{mark.group()} is work left behind"


def machine_paths(source):
    """Nothing names a folder of the machine that it was written on. Tests may invent homes."""
    folders = "root|work" if source.path.parts[0] == "tests" else "root|work|home|Users"
    for number, line in enumerate(source.lines, 1):
        path = re.search(rf"(?<![\w.~}}*$])/(?:{folders})/[\w./]+", line)
        if path:
            yield source.path, number, f"{path.group()} is one machine's"


def file_names(source):
    if source.is_cpp:
        if not re.fullmatch(r"[a-z0-9]+(?:_[a-z0-9]+)*", source.path.stem):
            yield source.path, 1, "a file is named in snake_case after its main type"
        is_test = re.search(r"^TEST(?:_F|_P)?\(", source.code, re.MULTILINE)
        if is_test and not source.path.stem.endswith(("_test", "_contract")):
            yield source.path, 1, "a file of tests ends in _test or _contract"


def endings(source):
    if source.text and not source.text.endswith("\n"):
        yield source.path, len(source.lines), "no newline at the end"
    if "\r" in source.text or "\t" in source.text and source.is_cpp:
        yield source.path, 1, "a tab or a carriage return"


def circles_of(links):
    """Each circle in a graph, as the names along it; `links` has every name's followers."""
    done = set()
    for start in sorted(links):
        trail, pending = [], [(start, iter(links[start]))]
        while pending:
            path, rest = pending[-1]
            if len(trail) < len(pending):
                trail.append(path)
            following = next(rest, None)
            if following is None:
                done.add(path)
                pending.pop()
                trail.pop()
            elif following in trail:
                yield trail[trail.index(following) :] + [following]
            elif following not in done:
                pending.append((following, iter(links[following])))


def circles(sources):
    """Files that include each other, directly or by way of others."""
    known = {str(source.path): source for source in sources}
    links = {
        path: [i.path for i in source.includes if i.quoted and i.path in known]
        for path, source in known.items()
    }
    for circle in circles_of(links):
        yield known[circle[0]].path, 1, "a circle of includes: " + " > ".join(circle)


def folder_circles(sources):
    """Folders whose files include each other's."""
    links, places = {}, {}
    for source in sources:
        folder = str(source.path.parent)
        followers = links.setdefault(folder, [])
        for include in source.includes:
            other = include.path.rpartition("/")[0]
            if include.quoted and other != folder:
                followers.append(other)
                places[folder, other] = source.path, include.line
                links.setdefault(other, [])
    for circle in circles_of(links):
        yield *places[circle[0], circle[1]], "a circle of folders: " + " > ".join(circle)


def missing_files(sources):
    known = {str(source.path) for source in sources}
    for source in sources:
        for include in source.includes:
            if include.quoted and include.path not in known and room_of(source.path):
                yield source.path, include.line, f"there is no {include.path}"


def unused_headers(sources):
    """Headers that nobody includes. It asks for the whole tree, so `judge` does not."""
    included = {include.path for source in sources for include in source.includes}
    for source in sources:
        if source.is_header and str(source.path) not in included:
            yield "unused_headers", source.path, 1, "nobody includes it"


def stems(sources):
    """Each side of a capability, an interface without a source, has the stem of its header."""
    paths = {str(source.path) for source in sources}
    for source in sources:
        is_interface = source.is_header and re.search(r"\bvirtual\b[^;{]*= 0;", source.code)
        has_source = str(source.path.with_suffix(".cpp")) in paths
        if str(source.path.parent) not in GROUND or not is_interface or has_source:
            continue
        for folder, names in SIDES.items():
            files = {name.format(source.path.stem) + ".h" for name in names}
            has_side = any(
                path.startswith(folder + "/") and path.rpartition("/")[2] in files
                for path in paths)
            is_excused = folder in WITHOUT_A_SIDE.get(str(source.path), {})
            if not has_side and not is_excused:
                yield source.path, 1, f"{folder} has no {' or '.join(sorted(files))}"
            elif has_side and is_excused:
                yield source.path, 1, f"{folder} has it, and the list says that it has not"


CPP_RULES = (
    include_directions, include_order, banned_calls, mutable_statics, header_form, class_comments,
    function_lengths, objc_file_lengths, file_names,
)
CODE_RULES = (line_lengths,)
TEXT_RULES = (leftovers, machine_paths, endings)
TREE_RULES = (circles, folder_circles, missing_files, stems)


def judge(sources):
    """All breaches of the rules in a tree of sources, by file and line."""
    cpp = [source for source in sources if source.is_cpp]
    code = [s for s in sources if s.is_cpp or s.path.suffix in SCRIPTS or s.path.name in SCRIPTS]
    for chosen, rules in ((cpp, CPP_RULES), (code, CODE_RULES), (sources, TEXT_RULES)):
        for source in chosen:
            for rule in rules:
                for path, line, message in rule(source):
                    yield rule.__name__, path, line, message
    for rule in TREE_RULES:
        for path, line, message in rule(cpp):
            yield rule.__name__, path, line, message
