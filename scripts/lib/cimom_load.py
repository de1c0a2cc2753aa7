#!/usr/bin/python3
"""Load on the module inside a running object manager (sfcb or OpenPegasus):
several pywbem clients ask every kind of request of every class at once while
the inventory file is replaced twice a second.

usage: cimom_load.py --cimom sfcb|pegasus --url URL --pywbem DIR --zeda-cim PATH
                     --inventory-a FILE --inventory-b FILE --live FILE --pids-cmd CMD
                     [--seconds N] [--clients N] [--rewrite-interval S] [--per-end N]
                     [--timeout S] [--zeda-data DIR] [--namespace NS] [--once] [--label TEXT]

The requests (the plan) come from zeda-cim's answers for inventory A and for
inventory B, the module loaded in-process:
  - ei of every class, also with two property lists; ein of every class;
  - gi of some elements of each of the four element classes (evenly spaced,
    and every element that exists in only one of the two inventories), also
    with two property lists;
  - ai, ain, ri, rin from some ends of every association (the ends of the
    instances zeda-cim enumerates; the pool and extent ends of
    ZEDA_ConcreteComponent_Primordial for
    ZEDA_AssociatedComponentExtent_Primordial), always naming the
    association class; ai and ri also with two property lists.

What may come back: each request has, for each inventory, the outcome the
module gives in zeda-cim (status code, number of results), as the object
manager presents it (OM_RULES below). While the file alternates between A and
B, a request must answer one of the two outcomes exactly: any other status
code, any other number of results (e.g. an enumeration mixing two inventory
versions), a lost connection or a timeout is an error. A status code other
than 0 that is the expected outcome (NOT_SUPPORTED for the name operations,
NOT_FOUND / FAILED for getInstance of the extent of a disk that the current
inventory lacks) is counted and shown, not an error.

The run also fails when the set of provider processes (--pids-cmd prints the
pids of the object manager's processes that have the module mapped, one a
line) is empty or changes at any time after the warm-up, or when a kind of
request was never asked. The provider's VmRSS is reported at the start, half
way through the load and at the end.

Modes: by default --clients loops (one process and one persistent
WBEMConnection each) for --seconds while a writer replaces --live with A and B
in turn every --rewrite-interval seconds (a temporary file renamed over it).
--once asks every request of the plan once with one client and rewrites
nothing (give the same file as A and B): the memory check's workload.
Prints one summary line (and the unexpected answers before it); exits 1 on
any failure, 2 on bad arguments.
"""
import json
import multiprocessing
import os
import queue
import random
import subprocess
import sys
import threading
import time
import traceback

from cimom_common import (ALL_CLASSES, ASSOCIATIONS, ELEMENTS, NAMESPACE,  # noqa: E402
                          NO_PROVIDER, WALK_ONLY, OneLineParser, die, load_pywbem,
                          quote_value)
OPERATIONS = ["ei", "ein", "gi", "ai", "ain", "ri", "rin"]

# How each object manager presents what the module answers. Each rule maps a
# module outcome (code, count) of one request to what a client sees; an
# outcome no rule touches is seen unchanged (error codes carry no results).
OM_RULES = {
    "sfcb": {
        "empty-get-instance-not-found":
            "getInstance that the module answers with no instance and status OK becomes "
            "CIM_ERR_NOT_FOUND (6) (docs/DEPLOY.md)",
        "association-only-class-enumerates-empty":
            "ei and ein of ZEDA_AssociatedComponentExtent_Primordial, registered for the "
            "association interface only, answer 0 results with status OK",
    },
    "pegasus": {
        "empty-get-instance-failed":
            "getInstance that the module answers with no instance and status OK becomes "
            "CIM_ERR_FAILED (1) \"Too few objects delivered\" (docs/DEPLOY.md)",
        "association-only-class-enumerates-empty":
            "ei and ein of ZEDA_AssociatedComponentExtent_Primordial (association interface "
            "only) answer 0 results with status OK (seen with OpenPegasus 2.14.4)",
        "association-names-not-supported-dropped":
            "ain and rin, which the module answers with CIM_ERR_NOT_SUPPORTED (7), answer 0 "
            "results with status OK: the dispatcher gathers an association request's "
            "responses and clears a NOT_SUPPORTED one unless every response is that error "
            "(OperationAggregate::resequenceResponse, Server/CIMOperationRequestDispatcher.cpp)",
    },
}


def om_outcome(cimom, req, code, count):
    """(code, count, rule name or None): the module's outcome as the client sees it."""
    if req["op"] == "gi" and code == 0 and count == 0:
        if cimom == "sfcb":
            return 6, 0, "empty-get-instance-not-found"
        return 1, 0, "empty-get-instance-failed"
    if code == NO_PROVIDER and req["cls"] in WALK_ONLY and req["op"] in ("ei", "ein"):
        return 0, 0, "association-only-class-enumerates-empty"
    if cimom == "pegasus" and req["op"] in ("ain", "rin") and code == 7:
        return 0, 0, "association-names-not-supported-dropped"
    if code == NO_PROVIDER:
        raise Fatal(f"the module has no provider for {label(req)}")
    return code, (count if code == 0 else 0), None


class Fatal(Exception):
    pass




# --------------------------------------------------------------------------
# Requests: {"op", "cls", "keys": [[name, value], ...] or None, "assoc", "props"}


def path_text(cls, keys):
    if keys is None:
        return cls
    return cls + "." + ",".join(f"{k}={quote_value(v)}" for k, v in keys)


def label(req):
    text = f"{req['op']} {path_text(req['cls'], req['keys'])}"
    if req["assoc"]:
        text += f" assoc={req['assoc']}"
    if req["props"] is not None:
        text += f" props={','.join(req['props'])}"
    return text


def request(op, cls, keys=None, assoc=None, props=None):
    return {"op": op, "cls": cls, "keys": keys, "assoc": assoc, "props": props}


class ZedaCim:
    """Runs zeda-cim with one inventory file; answers (code, [result dicts])."""

    def __init__(self, binary, inventory, data_dir):
        self.binary = binary
        self.env = {k: v for k, v in os.environ.items() if not k.startswith("PELKA_")}
        self.argv = [binary, "--inventory", inventory, "--format", "json"]
        if data_dir:
            self.argv += ["--program-data", data_dir]

    def ask(self, req):
        argv = self.argv + [req["op"], path_text(req["cls"], req["keys"])]
        if req["assoc"]:
            argv += ["--assoc-class", req["assoc"]]
        for p in req["props"] or []:
            argv += ["--property", p]
        try:
            done = subprocess.run(argv, capture_output=True, env=self.env, timeout=300)
        except subprocess.TimeoutExpired:
            raise Fatal(f"zeda-cim did not answer {label(req)} within 300 s")
        stderr = done.stderr.decode("utf-8", "replace").strip()
        if done.returncode == 2 and "factory missing" in stderr:
            return NO_PROVIDER, []
        if done.returncode not in (0, 1):
            raise Fatal(f"zeda-cim failed ({done.returncode}) for {label(req)}: {stderr}")
        try:
            document = json.loads(done.stdout)
        except ValueError as e:
            raise Fatal(f"zeda-cim printed no JSON for {label(req)}: {e}")
        return document["status"]["code"], document["results"]


def reference_ends(instance):
    """[(role, classname, keys)] of the reference properties of one zeda-cim instance."""
    ends = []
    for p in instance["properties"]:
        if p["type"] == "reference" and p["value"] is not None:
            v = p["value"]
            ends.append((p["name"], v["classname"], [[k["name"], k["value"]] for k in v["keys"]]))
    return ends


def spaced(items, n):
    """Up to n items evenly spaced over the list (first and last included)."""
    if len(items) <= n:
        return list(items)
    if n == 1:
        return [items[0]]
    return [items[round(i * (len(items) - 1) / (n - 1))] for i in range(n)]


def property_lists(instances):
    """Two property lists from the first instance answered: its first and last
    property, and its last property alone."""
    if not instances:
        return [["InstanceID"], ["ElementName"]]
    names = [p["name"] for p in instances[0]["properties"]]
    return [[names[0], names[-1]] if len(names) > 1 else names[:1], names[-1:]]


def pick_ends(ends_a, ends_b, per_end):
    """Evenly spaced ends present in both inventories, plus every end present in
    only one of them (up to per_end of those too)."""
    key = lambda e: json.dumps(e, sort_keys=True)  # noqa: E731
    keys_a = {key(e) for e in ends_a}
    keys_b = {key(e) for e in ends_b}
    seen, both, only = set(), [], []
    for e in ends_a + ends_b:
        k = key(e)
        if k in seen:
            continue
        seen.add(k)
        (both if k in keys_a and k in keys_b else only).append(e)
    return spaced(both, per_end) + only[:per_end]


def make_plan(zeda_a, zeda_b, per_end, jobs=2):
    """The requests, with the module's outcome (code, count) on A and on B."""
    enum_a, enum_b = {}, {}
    for cls in ELEMENTS + ASSOCIATIONS:
        for zeda, store, name in ((zeda_a, enum_a, "A"), (zeda_b, enum_b, "B")):
            code, results = zeda.ask(request("ei", cls))
            if code != 0 or not results:
                raise Fatal(f"zeda-cim answers ei {cls} on inventory {name} with status {code} "
                            f"and {len(results)} instances: nothing to plan from")
            store[cls] = results
    reqs = []
    for cls in ALL_CLASSES:
        reqs.append(request("ei", cls))
        reqs.append(request("ein", cls))
        if cls in enum_a:
            for props in property_lists(enum_a[cls]):
                reqs.append(request("ei", cls, props=props))
    # Element ends: found as the ends of the associations, with their keys.
    element_ends = {cls: ([], []) for cls in ELEMENTS}
    assoc_ends = {}
    for assoc in ASSOCIATIONS:
        per_role = {}
        for which, enum in ((0, enum_a), (1, enum_b)):
            for inst in enum[assoc]:
                for role, cls, keys in reference_ends(inst):
                    per_role.setdefault(role, ([], []))[which].append((cls, keys))
                    if cls in element_ends:
                        element_ends[cls][which].append(keys)
        assoc_ends[assoc] = per_role
    for walk_only, via in WALK_ONLY.items():
        assoc_ends[walk_only] = assoc_ends[via]
    for cls in ELEMENTS:
        ends = pick_ends(*element_ends[cls], per_end)
        gi_lists = property_lists(enum_a[cls])
        for keys in ends:
            reqs.append(request("gi", cls, keys))
        for keys, props in zip(ends, gi_lists * len(ends)):
            reqs.append(request("gi", cls, keys, props=props))
    for assoc, per_role in assoc_ends.items():
        for role, (ends_a, ends_b) in sorted(per_role.items()):
            for cls, keys in pick_ends(ends_a, ends_b, per_end):
                for op in ("ai", "ain", "ri", "rin"):
                    reqs.append(request(op, cls, keys, assoc=assoc))
    # Property lists for ai and ri: from what the first walk of each kind answers.
    walks = [r for r in reqs if r["op"] in ("ai", "ri")]
    outcomes = run_parallel(zeda_a, zeda_b, reqs, jobs)
    first_answer = {}
    for r in walks:
        results = outcomes[id(r)][2]
        if results and (r["op"], r["assoc"]) not in first_answer:
            first_answer[(r["op"], r["assoc"])] = results
    extra = []
    for r in walks:
        for props in property_lists(first_answer.get((r["op"], r["assoc"]), [])):
            extra.append(dict(r, props=props))
    outcomes.update(run_parallel(zeda_a, zeda_b, extra, jobs))
    plan = []
    for r in reqs + extra:
        a, b = outcomes[id(r)][:2]
        plan.append(dict(r, module=[a, b]))
    return plan


def run_parallel(zeda_a, zeda_b, reqs, jobs):
    """{id(req): ((code, count) on A, (code, count) on B, results on A)}."""
    out = {}
    lock = threading.Lock()
    queue = list(reqs)
    errors = []

    def work():
        while True:
            with lock:
                if not queue or errors:
                    return
                r = queue.pop()
            try:
                code_a, results_a = zeda_a.ask(r)
                code_b, results_b = (code_a, results_a) if zeda_b is zeda_a else zeda_b.ask(r)
            except Fatal as e:
                with lock:
                    errors.append(str(e))
                return
            with lock:
                out[id(r)] = ((code_a, len(results_a)), (code_b, len(results_b)), results_a)

    threads = [threading.Thread(target=work) for _ in range(jobs)]
    for t in threads:
        t.start()
    for t in threads:
        t.join()
    if errors:
        raise Fatal(errors[0])
    return out


# --------------------------------------------------------------------------
# Clients


def ask(pywbem, conn, req):
    """(code, count) of one request through pywbem; CIMError is a code."""
    path = None
    if req["keys"] is not None:
        path = pywbem.CIMInstanceName(req["cls"], keybindings=dict(req["keys"]), namespace=NAMESPACE)
    props, op = req["props"], req["op"]
    try:
        if op == "ei":
            got = conn.EnumerateInstances(req["cls"], NAMESPACE, LocalOnly=False, PropertyList=props)
        elif op == "ein":
            got = conn.EnumerateInstanceNames(req["cls"], NAMESPACE)
        elif op == "gi":
            got = [conn.GetInstance(path, LocalOnly=False, PropertyList=props)]
        elif op == "ai":
            got = conn.Associators(path, AssocClass=req["assoc"], PropertyList=props)
        elif op == "ain":
            got = conn.AssociatorNames(path, AssocClass=req["assoc"])
        elif op == "ri":
            got = conn.References(path, ResultClass=req["assoc"], PropertyList=props)
        else:
            got = conn.ReferenceNames(path, ResultClass=req["assoc"])
    except pywbem.CIMError as e:
        return e.status_code, 0
    return 0, len(got)


def classify(pywbem, conn, req, allowed):
    """None when the answer is one of the allowed outcomes, else the problem."""
    try:
        outcome = ask(pywbem, conn, req)
    except pywbem.Error as e:
        return None, f"{type(e).__name__}: {str(e)[:300]}"
    if outcome in allowed:
        return outcome, None
    return outcome, (f"answered status {outcome[0]} with {outcome[1]} results; expected "
                     + " or ".join(f"status {c} with {n}" for c, n in sorted(allowed)))


def client_loop(index, args, plan, deadline, results):
    stats = {"requests": 0, "errors": 0, "per_op": {}, "expected_codes": {}, "problems": []}
    try:
        pywbem = load_pywbem(args.pywbem)
        conn = pywbem.WBEMConnection(args.url, default_namespace=NAMESPACE, no_verification=True,
                                     timeout=args.timeout)
        rng = random.Random(1000 + index)
        order = list(range(len(plan)))
        while True:
            rng.shuffle(order)
            for i in order:
                if time.monotonic() >= deadline:
                    raise StopIteration
                req = plan[i]
                allowed = {tuple(o) for o in req["allowed"]}
                outcome, problem = classify(pywbem, conn, req, allowed)
                stats["requests"] += 1
                op = stats["per_op"].setdefault(req["op"], [0, 0])
                op[0] += 1
                if problem:
                    stats["errors"] += 1
                    op[1] += 1
                    if len(stats["problems"]) < 200:
                        stats["problems"].append(f"client {index}: {label(req)}: {problem}")
                elif outcome[0] != 0:
                    key = str(outcome[0])
                    stats["expected_codes"][key] = stats["expected_codes"].get(key, 0) + 1
    except StopIteration:
        pass
    except Exception:  # a client that breaks fails the run, with its reason
        stats["errors"] += 1
        stats["problems"].append(f"client {index} ended: {traceback.format_exc().strip()[-600:]}")
    results.put(stats)


# --------------------------------------------------------------------------
# Provider processes, inventory writer


def provider_pids(cmd):
    done = subprocess.run(["bash", "-c", cmd], capture_output=True, text=True, timeout=60)
    if done.returncode != 0:
        raise Fatal(f"--pids-cmd failed ({done.returncode}): {done.stderr.strip()[:300]}")
    return sorted(int(p) for p in done.stdout.split())


def rss_kb(pid):
    try:
        with open(f"/proc/{pid}/status") as f:
            for line in f:
                if line.startswith("VmRSS:"):
                    return int(line.split()[1])
    except OSError:
        return None
    return None


def rss_text(pids):
    parts = []
    for p in pids:
        kb = rss_kb(p)
        parts.append(f"{p}: " + ("gone" if kb is None else f"{kb / 1024:.1f} MB"))
    return ", ".join(parts) or "none"


class Writer(threading.Thread):
    """Replaces the live file with A and B in turn (temporary file + rename)."""

    def __init__(self, live, versions, interval):
        super().__init__(daemon=True)
        self.live, self.versions, self.interval = live, versions, interval
        self.stop = threading.Event()
        self.rewrites = 0
        self.error = None

    def put(self, data):
        tmp = f"{self.live}.tmp{os.getpid()}"
        with open(tmp, "wb") as f:
            f.write(data)
        os.replace(tmp, self.live)

    def run(self):
        turn = 1
        try:
            while not self.stop.wait(self.interval):
                self.put(self.versions[turn])
                self.rewrites += 1
                turn = 1 - turn
        except OSError as e:
            self.error = f"cannot replace {self.live}: {e}"


# --------------------------------------------------------------------------


def main(argv):
    parser = OneLineParser(prog="cimom_load.py", add_help=True)
    parser.add_argument("--cimom", required=True, choices=["sfcb", "pegasus"])
    parser.add_argument("--url", required=True)
    parser.add_argument("--pywbem", required=True)
    parser.add_argument("--zeda-cim", required=True)
    parser.add_argument("--inventory-a", required=True)
    parser.add_argument("--inventory-b", required=True)
    parser.add_argument("--live", required=True)
    parser.add_argument("--pids-cmd", required=True)
    parser.add_argument("--seconds", type=float, default=60)
    parser.add_argument("--clients", type=int, default=8)
    parser.add_argument("--rewrite-interval", type=float, default=0.5)
    parser.add_argument("--per-end", type=int, default=3)
    parser.add_argument("--timeout", type=float, default=120)
    parser.add_argument("--zeda-data")
    parser.add_argument("--once", action="store_true")
    parser.add_argument("--label", default="")
    try:
        args = parser.parse_args(argv)
    except SystemExit as e:
        return 2 if e.code else 0
    for name in ("inventory_a", "inventory_b"):
        if not os.path.isfile(getattr(args, name)):
            die(f"--{name.replace('_', '-')} {getattr(args, name)} is not a file", 2)
    for name in ("zeda_cim",):
        if not os.access(getattr(args, name), os.X_OK):
            die(f"--zeda-cim {args.zeda_cim} is not executable", 2)
    if not os.path.isfile(os.path.join(args.pywbem, "pywbem", "__init__.py")):
        die(f"--pywbem {args.pywbem} holds no pywbem package", 2)
    if args.seconds <= 0 or args.clients < 1 or args.rewrite_interval <= 0 or args.per_end < 1:
        die("--seconds, --rewrite-interval must be positive, --clients and --per-end at least 1", 2)
    if not os.path.exists(args.live):
        die(f"--live {args.live} does not exist (the object manager's inventory file)", 2)
    name = args.label or args.cimom
    try:
        return run(args, name)
    except Fatal as e:
        die(str(e))


def run(args, name):
    started = time.monotonic()
    with open(args.inventory_a, "rb") as f:
        version_a = f.read()
    with open(args.inventory_b, "rb") as f:
        version_b = f.read()
    if not args.once and version_a == version_b:
        raise Fatal("inventories A and B are identical: the load needs two versions that differ")
    zeda_a = ZedaCim(args.zeda_cim, args.inventory_a, args.zeda_data)
    zeda_b = zeda_a if args.once else ZedaCim(args.zeda_cim, args.inventory_b, args.zeda_data)
    plan = make_plan(zeda_a, zeda_b, args.per_end)
    rules_used = set()
    for req in plan:
        allowed = set()
        for code, count in req["module"]:
            c, n, rule = om_outcome(args.cimom, req, code, count)
            allowed.add((c, n))
            if rule:
                rules_used.add(rule)
        req["allowed"] = sorted(allowed)
    kinds = sorted({r["op"] for r in plan}, key=OPERATIONS.index)
    by_kind = ", ".join(f"{k} {sum(r['op'] == k for r in plan)}" for k in kinds)
    print(f"{name}: plan of {len(plan)} requests ({by_kind}) "
          f"over {len({r['cls'] for r in plan} | {r['assoc'] for r in plan if r['assoc']})} classes, "
          f"{sum(len(r['allowed']) > 1 for r in plan)} with an answer that differs between A and B; "
          f"{time.monotonic() - started:.0f} s", flush=True)
    for rule in sorted(rules_used):
        print(f"  rule {rule}: {OM_RULES[args.cimom][rule]}")

    # The live file starts as A; warm-up: one request of each class, so that
    # every provider (and process) the object manager starts is there.
    with open(args.live + ".tmpw", "wb") as f:
        f.write(version_a)
    os.replace(args.live + ".tmpw", args.live)
    pywbem = load_pywbem(args.pywbem)
    conn = pywbem.WBEMConnection(args.url, default_namespace=NAMESPACE, no_verification=True,
                                 timeout=args.timeout)
    problems, requests, errors = [], 0, 0
    expected_codes = {}
    warm = {}
    for req in plan:
        warm.setdefault((req["op"], req["cls"], req["assoc"]), req)
    warm_reqs = list(warm.values()) if not args.once else plan
    for req in warm_reqs:
        # On A only: every answer must be A's.
        allowed = {tuple(om_outcome(args.cimom, req, *req["module"][0])[:2])}
        outcome, problem = classify(pywbem, conn, req, allowed)
        requests += 1
        if problem:
            errors += 1
            problems.append(f"warm-up: {label(req)}: {problem}")
        elif outcome[0] != 0:
            expected_codes[str(outcome[0])] = expected_codes.get(str(outcome[0]), 0) + 1
    per_op = {}
    for req in warm_reqs:
        per_op.setdefault(req["op"], [0, 0])[0] += 1
    pids_start = provider_pids(args.pids_cmd)
    rss_start = rss_text(pids_start)
    pid_changes = []
    if not pids_start:
        pid_changes.append("no process of the object manager has the module mapped after the warm-up")
    rewrites = 0
    load_seconds = 0.0
    rss_half = None
    if not args.once:
        writer = Writer(args.live, [version_a, version_b], args.rewrite_interval)
        results = multiprocessing.Queue()
        load_start = time.monotonic()
        deadline = load_start + args.seconds
        clients = [multiprocessing.Process(target=client_loop, args=(i, args, plan, deadline, results))
                   for i in range(args.clients)]
        writer.start()
        for c in clients:
            c.start()
        stats = []
        last_seen = pids_start
        rss_half = None
        # Watch the provider processes until every client has reported.
        while len(stats) < len(clients):
            try:
                stats.append(results.get(timeout=0.5))
            except queue.Empty:
                pass
            if time.monotonic() > deadline + args.timeout + 60:
                pid_changes.append("a client did not end within the request timeout after the run")
                break
            if rss_half is None and time.monotonic() >= load_start + args.seconds / 2:
                rss_half = rss_text(last_seen)
            if time.monotonic() < deadline:
                now = provider_pids(args.pids_cmd)
                if now != last_seen:
                    pid_changes.append(f"provider processes {now} at {time.monotonic() - load_start:.1f} s "
                                       f"(were {last_seen})")
                    last_seen = now
        load_seconds = time.monotonic() - load_start
        writer.stop.set()
        writer.join()
        for c in clients:
            c.join(timeout=10)
            if c.is_alive():
                c.kill()
        if writer.error:
            problems.append(writer.error)
            errors += 1
        rewrites = writer.rewrites
        for s in stats:
            requests += s["requests"]
            errors += s["errors"]
            problems.extend(s["problems"])
            for op, (n, e) in s["per_op"].items():
                entry = per_op.setdefault(op, [0, 0])
                entry[0] += n
                entry[1] += e
            for code, n in s["expected_codes"].items():
                expected_codes[code] = expected_codes.get(code, 0) + n
        if len(stats) < len(clients):
            errors += len(clients) - len(stats)
            problems.append(f"{len(clients) - len(stats)} clients never reported")
        # Back to A, so that whatever runs next sees the starting inventory.
        writer.put(version_a)
    pids_end = provider_pids(args.pids_cmd)
    rss_end = rss_text(pids_end)
    if pids_end != pids_start:
        pid_changes.append(f"provider processes at the end {pids_end} (were {pids_start})")
    missing = [op for op in OPERATIONS if per_op.get(op, [0])[0] == 0]
    # The same problem seen by several clients is shown once, with its count.
    distinct = {}
    for p in problems:
        text = p.split(": ", 1)[1] if p.startswith("client ") else p
        distinct[text] = distinct.get(text, 0) + 1
    for text, n in list(distinct.items())[:40]:
        print(f"  error: {text}" + (f" ({n} times)" if n > 1 else ""))
    if len(distinct) > 40:
        print(f"  ... {len(distinct) - 40} more distinct errors")
    for p in pid_changes:
        print(f"  error: {p}")
    if missing:
        print(f"  error: never asked: {', '.join(missing)}")
    ops = ", ".join(f"{op} {per_op[op][0]}" + (f" ({per_op[op][1]} bad)" if per_op[op][1] else "")
                    for op in OPERATIONS if op in per_op)
    codes = ", ".join(f"{n}x{c}" for c, n in sorted(expected_codes.items())) or "none"
    ok = errors == 0 and not pid_changes and not missing and requests > 0
    what = "once" if args.once else (f"{args.clients} clients, {load_seconds:.0f} s, "
                                     f"{rewrites} inventory rewrites")
    print(f"{name} load {'PASS' if ok else 'FAIL'}: {requests} requests ({ops}), {errors} errors, "
          f"expected CIM errors {codes}; {what}; provider pids {' '.join(map(str, pids_start)) or 'none'}"
          f"{'' if pids_end == pids_start else ' -> ' + (' '.join(map(str, pids_end)) or 'none')}; "
          f"RSS start {rss_start}, " + (f"half-time {rss_half}, " if rss_half else "")
          + f"end {rss_end}; {time.monotonic() - started:.0f} s in all", flush=True)
    return 0 if ok else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
