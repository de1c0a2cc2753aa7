#!/usr/bin/python3
"""Reads the valgrind memcheck logs of an object manager run and decides
whether the module made memory errors.

usage: cimom_valgrind.py --cimom sfcb|pegasus --pids FILE [--maps-dir DIR] [--source-root DIR]
                         [--seconds N] LOGDIR

LOGDIR holds vg.PID.log of every process valgrind ran (valgrind
--log-file=LOGDIR/vg.%p.log: a forked child writes to a file of its own;
memcheck's XML output cannot be used, a forked child's XML goes into its
parent's file). FILE lists the pids of the processes that had
libZEDA_DiskDriveLite.so mapped at the end of the run, one a line; DIR holds
maps.PID, a copy of /proc/PID/maps of each of them taken before the object
manager stopped.

A frame is the module's when its address lies in a mapping of
libZEDA_DiskDriveLite.so or libPelkaUtility.so of that process (maps.PID), or
when valgrind names one of those files, or a source file below --source-root
(valgrind --fullpath-after= prints whole source paths). An error is the
module's when a frame of the module is in the stack where it happened, in the
stack where the block was freed (a use of memory the module freed too early
shows the module only there), or is the first frame outside the allocator of
the stack where the block was allocated or the uninitialised value created
(valgrind --track-origins=yes): memory the module asked for.

The processes judged are those listed in FILE and every other process whose
log shows a frame of the module. In them every memcheck error counts (invalid
read, write, free, mismatched free, uninitialised values, syscall parameters
pointing to uninitialised or unaddressable bytes, overlapping copies, fishy
arguments, invalid jumps):
  - an error with a frame of the module fails;
  - an error without one is the object manager's own: it must match one of
    the named EXCLUSIONS below (kind and functions of its stacks), else it
    fails too, so that a new one is looked at before it is accepted.
A listed process without a log, or a judged process that valgrind saw die of
a signal, fails the run.

Prints the errors that fail (kind, first frames), the exclusions used and one
summary line; exits 1 on failure, 2 on bad arguments.
"""
import os
import re
import sys

OUR_OBJECTS = ("libZEDA_DiskDriveLite.so", "libPelkaUtility.so")

# The first line of each kind of memcheck error.
KINDS = [
    ("InvalidRead", re.compile(r"^Invalid read of size")),
    ("InvalidWrite", re.compile(r"^Invalid write of size")),
    ("InvalidFree", re.compile(r"^Invalid free\(\)")),
    ("MismatchedFree", re.compile(r"^Mismatched free\(\)")),
    ("UninitCondition", re.compile(r"^Conditional jump or move depends on uninitialised")),
    ("UninitValue", re.compile(r"^Use of uninitialised value")),
    ("SyscallParam", re.compile(r"^Syscall param .*(uninitialised|unaddressable)")),
    ("Overlap", re.compile(r"^Source and destination overlap")),
    ("FishyValue", re.compile(r"^Argument .* has a fishy")),
    ("InvalidJump", re.compile(r"^Jump to the invalid address")),
    ("Other", re.compile(r"^Invalid |uninitialised|unaddressable")),
]

# Errors in the object managers' own code, accepted with the reason. Each
# entry: kind, and functions every one of which must be a frame of one of the
# error's stacks (a C++ frame's name with its parameters counts as its
# name). Only errors without a frame of the module are tried.

# Both object managers load the module with dlopen.
LD_SO_RPATH = {
    "kind": "InvalidRead",
    "functions": ["is_dst", "decompose_rpath", "dlopen_implementation"],
    "reason": "glibc's dynamic loader, while dlopen maps the module's dependencies, compares "
              "the 8-byte block it strdup'ed for the module's RUNPATH \"$ORIGIN\" with its "
              "word-at-a-time strncmp (is_dst, elf/dl-load.c), which reads past the string's "
              "end within the same aligned word; memcheck cannot replace ld.so's own strncmp. "
              "Both stacks are ld.so's under the object manager's provider loading; no frame "
              "of the module",
}

EXCLUSIONS = {
    "sfcb": {
        "ld.so-rpath-word-compare": LD_SO_RPATH,
        "sfcb-message-bytes-never-set": {
            "kind": "SyscallParam",
            "functions": ["sendmsg", "spSendMsg"],
            "reason": "sfcb's provider process sends its messages and result buffers "
                      "(msgqueue.c spSendMsg) with bytes sfcb itself never set: gaps of "
                      "its serialised instances in the buffer result.c "
                      "nextResultBufferPos reallocs, and of its message structures (the "
                      "module's values are whole: the binding zeroes every CMPIData it "
                      "makes); the memory, and the origin of the uninitialised bytes where "
                      "valgrind names one, is sfcb's allocation, no frame of the module",
        },
    },
    "pegasus": {
        "ld.so-rpath-word-compare": LD_SO_RPATH,
        "pegasus-pipe-buffer-bytes-never-set": {
            "kind": "SyscallParam",
            "functions": ["write", "Pegasus::AnonymousPipe::writeBuffer",
                          "Pegasus::AnonymousPipe::writeMessage"],
            "reason": "cimprovagt writes a message to cimserver through its pipe from a "
                      "CIMBuffer (4,096 bytes malloc'ed by CIMBuffer::_create) holding "
                      "bytes the serialiser never set (seen for the class-cache request "
                      "the agent sends on its own, SCMOClassCache); the memory and the "
                      "origin of the uninitialised bytes are OpenPegasus's, no frame of the "
                      "module",
        },
    },
}

FRAME = re.compile(r"^\s+(?:at|by) 0x([0-9A-Fa-f]+): (.*)$")


from cimom_common import OneLineParser, die  # noqa: E402


# Frames of the allocator itself (and of valgrind's replacement of it): an
# allocation stack is judged by its first frame that is none of these.
ALLOCATOR = re.compile(r"^(malloc|calloc|realloc|reallocarray|free|strdup|strndup|memalign|"
                       r"posix_memalign|aligned_alloc|valloc|operator new|operator delete|"
                       r"__libc_\w*alloc|__gnu_cxx::new_allocator|std::allocator|"
                       r"std::__new_allocator)\b")


class Error:
    def __init__(self, kind, what):
        self.kind, self.what = kind, what
        # [(role, [(address, text)])]: "where" (the first stack), then
        # "freed", "alloc" (a block allocated, or an uninitialised value
        # created) or "other", by the line that introduces each stack.
        self.stacks = [("where", [])]

    @property
    def frames(self):
        return [f for _, stack in self.stacks for f in stack]

    def functions(self):
        return {text.split(" (", 1)[0] for _, text in self.frames}

    def start_stack(self, line):
        if "free'd" in line or "freed" in line:
            role = "freed"
        elif "alloc'd" in line or "created by" in line:
            role = "alloc"
        else:
            role = "other"
        self.stacks.append((role, []))

    def blamed_frames(self):
        """The frames that make the error the module's when one of them is:
        every frame where it happened and where the block was freed; of an
        allocation (or origin) stack, the first frame outside the allocator,
        i.e. the code that asked for the memory."""
        frames = []
        for role, stack in self.stacks:
            if role == "alloc":
                callers = [f for f in stack if not ALLOCATOR.match(f[1])
                           and "vgpreload_memcheck" not in f[1]]
                frames.extend(callers[:1])
            else:
                frames.extend(stack)
        return frames


def read_log(path):
    """(errors, fatal signal line or None, whether the file is memcheck's)."""
    errors, fatal, memcheck = [], None, False
    current = None
    with open(path, encoding="utf-8", errors="replace") as f:
        for raw in f:
            m = re.match(r"^==\d+== ?(.*)$", raw.rstrip("\n"))
            if not m:
                continue
            line = m.group(1)
            if "Memcheck, a memory error detector" in line:
                memcheck = True
            if "Process terminating with default action of signal" in line:
                fatal = line.strip()
            if not line.strip():
                current = None
                continue
            frame = FRAME.match(line)
            if frame and current is not None:
                current.stacks[-1][1].append((int(frame.group(1), 16), frame.group(2)))
                continue
            if current is not None and line.startswith(" ") and not frame:
                current.start_stack(line)
                continue
            if line[0] != " ":
                current = None
                for kind, pattern in KINDS:
                    if pattern.search(line):
                        current = Error(kind, line.strip())
                        errors.append(current)
                        break
    # A header line without any stack is one of valgrind's hints, not an error.
    return [e for e in errors if e.frames], fatal, memcheck


def read_maps(path):
    """[(start, end)] of the mappings of OUR_OBJECTS in a copy of /proc/PID/maps."""
    ranges = []
    try:
        with open(path) as f:
            for line in f:
                fields = line.split()
                if len(fields) >= 6 and os.path.basename(fields[5]) in OUR_OBJECTS:
                    start, end = fields[0].split("-")
                    ranges.append((int(start, 16), int(end, 16)))
    except OSError:
        return None
    return ranges


def frame_is_ours(address, text, ranges, source_root):
    if any(start <= address < end for start, end in ranges):
        return True
    if any(f"/{name}" in text or f"({name}" in text for name in OUR_OBJECTS):
        return True
    return bool(source_root) and f"({source_root}/" in text


def excluded(cimom, error):
    """The exclusion whose kind is the error's and each of whose functions
    begins the name of a frame of the error (a C++ name with its parameters)."""
    names = error.functions()
    for name, rule in EXCLUSIONS[cimom].items():
        if rule["kind"] == error.kind and all(
                any(n == fn or n.startswith(fn + "(") for n in names) for fn in rule["functions"]):
            return name
    return None


def main(argv):
    parser = OneLineParser(prog="cimom_valgrind.py")
    parser.add_argument("--cimom", required=True, choices=["sfcb", "pegasus"])
    parser.add_argument("--pids", required=True)
    parser.add_argument("--maps-dir")
    parser.add_argument("--source-root")
    parser.add_argument("--seconds", type=int)
    parser.add_argument("logdir")
    try:
        args = parser.parse_args(argv)
    except SystemExit as e:
        return 2 if e.code else 0
    if not os.path.isdir(args.logdir):
        die(f"log directory {args.logdir} does not exist", 2)
    try:
        with open(args.pids) as f:
            listed = [int(p) for p in f.read().split()]
    except (OSError, ValueError) as e:
        die(f"cannot read the provider pids from {args.pids}: {e}", 2)
    source_root = os.path.realpath(args.source_root) if args.source_root else None

    logs = {}
    for name in os.listdir(args.logdir):
        m = re.fullmatch(r"vg\.(\d+)\.log", name)
        if m:
            logs[int(m.group(1))] = os.path.join(args.logdir, name)
    failures = []
    if not listed:
        failures.append("no process had the module mapped at the end of the run")
    judged = {}
    for pid, path in sorted(logs.items()):
        errors, fatal, memcheck = read_log(path)
        ranges = []
        if args.maps_dir:
            ranges = read_maps(os.path.join(args.maps_dir, f"maps.{pid}"))
            if ranges is None:
                if pid in listed:
                    failures.append(f"no copy of /proc/{pid}/maps in {args.maps_dir}")
                ranges = []
        if pid in listed and not ranges and args.maps_dir:
            failures.append(f"the maps of provider process {pid} show no mapping of the module")
        marked = [(e, any(frame_is_ours(a, t, ranges, source_root) for a, t in e.blamed_frames()))
                  for e in errors]
        if pid in listed or any(mine for _, mine in marked):
            judged[pid] = (path, marked, fatal, memcheck)
    for pid in listed:
        if pid not in logs:
            failures.append(f"provider process {pid} has no valgrind log in {args.logdir} "
                            f"(not started under valgrind?)")

    counts = {"module": 0, "excluded": 0, "unexplained": 0}
    used, kinds = {}, {}
    for pid, (path, marked, fatal, memcheck) in sorted(judged.items()):
        if not memcheck:
            failures.append(f"{path} is not a valgrind memcheck log")
        if fatal:
            failures.append(f"process {pid}: {fatal}")
        for error, mine in marked:
            kinds[error.kind] = kinds.get(error.kind, 0) + 1
            stack = "\n      ".join(f"{role}: " + "\n        ".join(t for _, t in frames[:10])
                                      for role, frames in error.stacks if frames)
            if mine:
                counts["module"] += 1
                failures.append(f"process {pid}: {error.kind} with a frame of the module: "
                                f"{error.what}\n      {stack}")
                continue
            rule = excluded(args.cimom, error)
            if rule:
                counts["excluded"] += 1
                used[rule] = used.get(rule, 0) + 1
            else:
                counts["unexplained"] += 1
                failures.append(f"process {pid}: {error.kind} without a frame of the module, matching "
                                f"no exclusion: {error.what}\n      {stack}")
    for f in failures[:40]:
        print(f"  error: {f}")
    if len(failures) > 40:
        print(f"  ... {len(failures) - 40} more")
    for rule, n in sorted(used.items()):
        print(f"  excluded {n}x {rule}: {EXCLUSIONS[args.cimom][rule]['reason']}")
    ok = not failures
    kind_text = ", ".join(f"{n}x {k}" for k, n in sorted(kinds.items())) or "none"
    print(f"{args.cimom} memcheck {'PASS' if ok else 'FAIL'}: {counts['module']} errors with a frame "
          f"of the module, {counts['unexplained']} unexplained, {counts['excluded']} excluded "
          f"(object manager's own); kinds: {kind_text}; provider process log(s) of pids "
          f"{' '.join(map(str, sorted(judged))) or 'none'} (of {len(logs)} processes under valgrind)"
          + (f"; {args.seconds} s" if args.seconds is not None else ""), flush=True)
    return 0 if ok else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
