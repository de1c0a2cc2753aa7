#!/usr/bin/python3
"""Reads the valgrind memcheck logs of an object manager run and decides
whether the module made memory errors.

usage: cimom_valgrind.py --cimom sfcb|pegasus --pids FILE [--seconds N] LOGDIR

LOGDIR holds vg.PID.xml and vg.PID.log of every process valgrind ran (one
pair per process: valgrind --xml=yes --xml-file=LOGDIR/vg.%p.xml
--log-file=LOGDIR/vg.%p.log). FILE lists the pids of the processes that had
libZEDA_DiskDriveLite.so mapped at the end of the run, one a line.

The processes judged are those listed in FILE and every other process whose
log shows a frame of the module's libraries (a provider process that ended
early is thereby judged too). In them, every memcheck error counts (invalid
read, write, free, mismatched free, uninitialised values, syscall parameters
pointing to uninitialised bytes, overlapping copies, invalid jumps ...; leak
reports are not errors here):
  - an error with a frame in libZEDA_DiskDriveLite.so or libPelkaUtility.so
    (the module and its utility library) is the module's: any one fails;
  - an error without such a frame is the object manager's own: it must match
    one of the named EXCLUSIONS below (kind and functions of its stack), else
    it fails too, so that a new one is looked at before it is accepted.
A process of the list without a log, a log that is not valgrind memcheck's,
or a process that valgrind saw die of a signal fails the run.

Prints the errors that fail (kind, first frames) and one summary line; exits 1
on failure, 2 on bad arguments.
"""
import argparse
import os
import re
import sys
import xml.etree.ElementTree as ET

OUR_OBJECTS = ("libZEDA_DiskDriveLite.so", "libPelkaUtility.so")

# Error kinds of memcheck's XML output that are not errors for this check.
NOT_ERRORS = {"Leak_DefinitelyLost", "Leak_IndirectlyLost", "Leak_PossiblyLost",
              "Leak_StillReachable"}

# Errors in the object managers' own code, accepted with the reason. Each
# entry: kind (memcheck's XML kind) and functions, every one of which must be
# a frame of the error's stack; the error must also have no frame of
# OUR_OBJECTS (checked before exclusions are tried).
EXCLUSIONS = {
    "sfcb": {},
    "pegasus": {},
}


def die(message, status=2):
    sys.stderr.write(f"cimom_valgrind.py: {message}\n")
    sys.exit(status)


def frame_text(frame):
    fn = frame.findtext("fn") or "???"
    obj = os.path.basename(frame.findtext("obj") or "?")
    where = frame.findtext("file")
    if where:
        where = f"{where}:{frame.findtext('line') or '?'}"
    return f"{fn} ({where or obj})" + (f" [{obj}]" if where else "")


def read_errors(path):
    """[(kind, what, [frame elements of the first stack])] of one XML log, and
    whether the file is a memcheck log. The file of a process killed before it
    ended lacks its closing tags: each <error> element is parsed alone."""
    with open(path, encoding="utf-8", errors="replace") as f:
        text = f.read()
    memcheck = "<tool>memcheck</tool>" in text
    errors = []
    for block in re.findall(r"<error>.*?</error>", text, flags=re.S):
        try:
            node = ET.fromstring(block)
        except ET.ParseError as e:
            errors.append(("Unreadable", f"unreadable error element: {e}", []))
            continue
        kind = node.findtext("kind") or "?"
        what = node.findtext("what") or node.findtext("xwhat/text") or ""
        stack = node.find("stack")
        frames = list(stack.findall("frame")) if stack is not None else []
        errors.append((kind, what, frames))
    return memcheck, errors


def fatal_signal(log_path):
    if not os.path.exists(log_path):
        return None
    with open(log_path, encoding="utf-8", errors="replace") as f:
        for line in f:
            if "Process terminating with default action of signal" in line:
                return line.split("==", 2)[-1].strip()
    return None


def ours(frames):
    return any(os.path.basename(f.findtext("obj") or "") in OUR_OBJECTS for f in frames)


def excluded(cimom, kind, frames):
    names = {f.findtext("fn") or "" for f in frames}
    for name, rule in EXCLUSIONS[cimom].items():
        if rule["kind"] == kind and all(fn in names for fn in rule["functions"]):
            return name
    return None


def main(argv):
    parser = argparse.ArgumentParser(prog="cimom_valgrind.py")
    parser.add_argument("--cimom", required=True, choices=["sfcb", "pegasus"])
    parser.add_argument("--pids", required=True)
    parser.add_argument("--seconds", type=int)
    parser.add_argument("logdir")
    try:
        args = parser.parse_args(argv)
    except SystemExit as e:
        return 2 if e.code else 0
    if not os.path.isdir(args.logdir):
        die(f"log directory {args.logdir} does not exist")
    try:
        with open(args.pids) as f:
            listed = [int(p) for p in f.read().split()]
    except (OSError, ValueError) as e:
        die(f"cannot read the provider pids from {args.pids}: {e}")

    logs = {}
    for name in os.listdir(args.logdir):
        m = re.fullmatch(r"vg\.(\d+)\.xml", name)
        if m:
            logs[int(m.group(1))] = os.path.join(args.logdir, name)
    failures = []
    judged = {}
    for pid, path in sorted(logs.items()):
        memcheck, errors = read_errors(path)
        if pid in listed or any(ours(frames) for _, _, frames in errors):
            judged[pid] = (path, memcheck, errors)
    if not listed:
        failures.append("no process had the module mapped at the end of the run")
    for pid in listed:
        if pid not in logs:
            failures.append(f"provider process {pid} has no valgrind log in {args.logdir} "
                            f"(not started under valgrind?)")

    counts = {"module": 0, "excluded": 0, "unexplained": 0}
    used = {}
    kinds = {}
    for pid, (path, memcheck, errors) in sorted(judged.items()):
        if not memcheck:
            failures.append(f"{path} is not a valgrind memcheck log")
        signal = fatal_signal(path[:-len(".xml")] + ".log")
        if signal:
            failures.append(f"process {pid}: {signal}")
        for kind, what, frames in errors:
            if kind in NOT_ERRORS:
                continue
            kinds[kind] = kinds.get(kind, 0) + 1
            stack = "\n      ".join(frame_text(f) for f in frames[:12])
            if ours(frames):
                counts["module"] += 1
                failures.append(f"process {pid}: {kind} in the module: {what}\n      {stack}")
                continue
            rule = excluded(args.cimom, kind, frames)
            if rule:
                counts["excluded"] += 1
                used[rule] = used.get(rule, 0) + 1
            else:
                counts["unexplained"] += 1
                failures.append(f"process {pid}: {kind} without a frame of the module and matching "
                                f"no exclusion: {what}\n      {stack}")
    for f in failures[:40]:
        print(f"  error: {f}")
    if len(failures) > 40:
        print(f"  ... {len(failures) - 40} more")
    for rule, n in sorted(used.items()):
        print(f"  excluded {n}x {rule}: {EXCLUSIONS[args.cimom][rule]['reason']}")
    ok = not failures
    kind_text = ", ".join(f"{n}x {k}" for k, n in sorted(kinds.items())) or "none"
    print(f"{args.cimom} memcheck {'PASS' if ok else 'FAIL'}: {counts['module']} errors in the module, "
          f"{counts['unexplained']} unexplained, {counts['excluded']} excluded (object manager's own); "
          f"kinds: {kind_text}; {len(judged)} provider process log(s) "
          f"(pids {' '.join(map(str, sorted(judged))) or 'none'}) of {len(logs)} processes"
          + (f"; {args.seconds} s" if args.seconds is not None else ""), flush=True)
    return 0 if ok else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
