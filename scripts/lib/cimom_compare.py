#!/usr/bin/python3
"""Asks a running object manager (sfcb or OpenPegasus) about every class of the
module through two real clients, wbemcli and pywbem, and compares each answer
with zeda-cim's for the same inventory.

usage: cimom_compare.py --cimom sfcb|pegasus --url URL --zeda-cim PATH --env-file FILE
                        --state DIR --label NAME [--sample N] [--hostile] [--log FILE]...
                        [--zeda-cache FILE] [--zeda-data DIR] [--pywbem DIR] [--namespace NS]
       cimom_compare.py --rules [--cimom sfcb|pegasus]

What is asked, for every class of the module:
  - ei and ein of every class (ei also with two property lists: one key and
    one non-key property, and a non-key property only);
  - gi of every element instance zeda-cim enumerates (same three property
    lists);
  - ai, ain, ri, rin from every endpoint of every association (the ends of
    the association instances zeda-cim enumerates; the pool/extent ends for
    ZEDA_AssociatedComponentExtent_Primordial), the association class always
    named; ai and ri also with the two property lists of the result class.
  With --sample N, the per-instance requests (gi, ai, ain, ri, rin) are asked
  of every Nth element and endpoint only (in zeda-cim's order, so the choice
  is the same on every run), enumerations always in full; with
  --plain-enumerations, ei without property lists only.
  --hostile adds requests with keys of 2,000 and 30,000 characters, empty,
  quoted, UTF-8 and random printable text (fixed seed).

An answer is identical when the status code is the same and the instances
(or paths) match one for one, property by property, where each difference
must be covered by a named rule of the object manager (--rules prints them).
The run also fails on a lost connection, a request that times out, a
provider process of the module that ends (found through /proc/*/maps in the
object manager's session), and an error line of the object manager's log.
Prints "N/M identical" per client and exits 1 on any failure.
"""
import argparse
import json
import os
import random
import re
import subprocess
import sys
import time
import xml.etree.ElementTree as ET

from cimom_common import (ASSOCIATIONS, ELEMENTS, MODULE_LIBRARY, NO_PROVIDER,  # noqa: E402
                          WALK_ONLY, load_pywbem, quote_value)

# ---------------------------------------------------------------------------
# The object managers' own documented behaviour: each difference an answer
# may show against zeda-cim's, with its name. Anything else is a failure.
RULES = {
    "sfcb": {
        "fills-from-class":
            "a property the module leaves unset is filled from the class: NULL, or the "
            "default value the class definition gives (GetClass of the same server)",
        "property-list-left-to-provider":
            "under a property list, the instances are those the provider returned: sfcb "
            "hands the list to the provider and filters nothing itself; the module "
            "applies it (setPropertyFilter) to the pool instances only, so other "
            "instances come back with every property, as without a list",
        "keys-outside-property-list":
            "under a property list, key properties not in the list are missing: sfcb "
            "ignores the key list the provider hands setPropertyFilter (deprecated by "
            "the CMPI standard)",
        "empty-get-instance-not-found":
            "getInstance that the module answers with no instance and status OK "
            "becomes CIM_ERR_NOT_FOUND (6)",
        "association-only-class-enumerates-empty":
            "ei and ein of ZEDA_AssociatedComponentExtent_Primordial (registered for the "
            "association interface only; the module exports no instance factory for it) "
            "answer 0 results with status OK",
        "unknown-association-class-not-found":
            "an association request naming an association class the repository lacks "
            "answers CIM_ERR_NOT_FOUND (6) without calling the module (zeda-cim finds no "
            "provider of that name)",
        "association-class-named":
            "every association request names its association class (wbemcli -ac/-arc, "
            "pywbem AssocClass/ResultClass): without one sfcb asks every association "
            "provider of the namespace with a null class, which three classes refuse",
    },
    "pegasus": {
        "fills-from-class":
            "every property of the class is returned: one the module leaves unset is "
            "NULL or the default of the class definition (e.g. RequestedState 12, "
            "Primordial TRUE, RemovalConditions 2)",
        "property-list-applied-by-server":
            "OpenPegasus applies a property list to every instance itself, keys included: "
            "properties the module set but the list does not name are missing (zeda-cim, "
            "like the module, filters only the pool instances, through setPropertyFilter)",
        "empty-get-instance-failed":
            "getInstance that the module answers with no instance and status OK "
            "becomes CIM_ERR_FAILED (1) \"Too few objects delivered\"",
        "unlinked-association-empty":
            "an association request whose association class does not reference the "
            "source class answers 0 results with status OK, without calling the module",
        "unknown-class-invalid-parameter":
            "an association request naming an association class the repository lacks "
            "answers CIM_ERR_INVALID_PARAMETER (4) without calling the module (zeda-cim "
            "finds no provider of that name)",
        "association-only-class-enumerates-empty":
            "ei and ein of ZEDA_AssociatedComponentExtent_Primordial (registered for the "
            "association interface only; the module exports no instance factory for it) "
            "answer 0 results with status OK",
        "names-not-supported-empty":
            "associator-names and reference-names, which the module answers with "
            "CIM_ERR_NOT_SUPPORTED (7), answer 0 results with status OK",
        "empty-keys-dropped":
            "a key whose value is the empty string is left out of the object path the "
            "provider receives, so the module's key lookup fails with "
            "CIM_ERR_NO_SUCH_PROPERTY (12) where zeda-cim (which keeps it) answers "
            "another error",
    },
}

# Requests an object manager's own code cannot take, skipped with the reason.
EXCLUSIONS = {
    "sfcb": {
        "objectpath-fixed-buffers":
            "sfcb 1.3.11 writes object path texts into fixed 4,096/2,048-byte buffers "
            "with strcat (objectpath.c): references from a path whose keys hold 2,000 "
            "characters fail inside sfcb (CIM_ERR_FAILED, its provider process killed), "
            "and 30,000-character keys hang it; so references with keys longer than "
            "1,000 characters and associators with keys longer than 10,000 are skipped "
            "(getInstance is asked with every length)",
        "references-quote-in-key":
            "references whose answer holds a key value with a double quote end sfcb's "
            "HTTP process (the connection drops, the provider process lives); skipped "
            "(associators and getInstance are asked with quotes)",
    },
    "pegasus": {},
}

# What a client cannot send, skipped with the reason (for both object managers).
CLIENT_EXCLUSIONS = {
    "wbemcli-no-quotes-in-keys":
        "wbemcli cannot send a double quote inside a key value (its object path parser "
        "stops with \"Url Exception: Incorrectly quoted string\"); pywbem asks those",
}

# Lines of an object manager's log that fail the run (case-insensitive).
LOG_ERRORS = {
    "sfcb": [r"-#-", r"\*\*\*", r"SIGSEGV", r"ZEDA", r"DiskDriveLite", r"Pelka"],
    "pegasus": [r"ZEDA", r"DiskDriveLite", r"Pelka", r"cimprovagt", r"signal", r"terminat",
                r"exception"],
}
# Lines matching these are the object manager's routine chatter.
LOG_ROUTINE = {
    "sfcb": [r"^--- ", r"^-#- Serious provider id"],
    "pegasus": [r"Started CIM Server", r"Listening on", r"CIM Server stopped"],
}

# ---------------------------------------------------------------------------
# Canonical values: every value a text (or a tuple of texts for arrays), a
# reference the text of its path without host and namespace.


def canon_scalar(cimtype, value):
    if value is None:
        return None
    if cimtype == "boolean":
        if isinstance(value, bool):
            return "TRUE" if value else "FALSE"
        return str(value).strip().upper()
    if cimtype in ("real32", "real64"):
        return repr(float(value))
    if cimtype and (cimtype.startswith("uint") or cimtype.startswith("sint")):
        return str(int(value))
    return str(value)


def path_text(classname, keys):
    """keys: {name: canonical value}. Class and keys, names compared case-blind."""
    inner = ",".join(f"{k.lower()}={v}" for k, v in sorted(keys.items(), key=lambda i: i[0].lower()))
    return f"{classname.lower()}.{inner}"


# --- zeda-cim JSON


def zeda_value(entry):
    cimtype = entry["type"]
    value = entry["value"]
    if value is None:
        return None
    if cimtype == "reference":
        return "ref:" + zeda_path(value)
    if cimtype.endswith("[]"):
        return tuple(canon_scalar(cimtype[:-2], v) for v in value)
    return canon_scalar(cimtype, value)


def zeda_path(path):
    return path_text(path["classname"], {k["name"]: zeda_value(k) for k in path["keys"]})


def zeda_answer(document):
    """(code, [(class, {prop: value})] or [path text])."""
    items = []
    for result in document["results"]:
        if "properties" in result:
            items.append((result["path"]["classname"],
                          {p["name"].lower(): zeda_value(p) for p in result["properties"]}))
        elif "classname" in result:
            items.append(zeda_path(result))
        else:
            items.append(("?", {"?": json.dumps(result, sort_keys=True)}))
    return document["status"]["code"], items


# --- CIM-XML (wbemcli -dx)

KEYVALUE_TYPES = {"numeric": "sint64", "boolean": "boolean"}


def xml_path(node):
    if node.tag in ("VALUE.REFERENCE", "INSTANCEPATH", "LOCALINSTANCEPATH", "VALUE.OBJECTPATH"):
        name = node.find(".//INSTANCENAME")
    else:
        name = node
    if name is None:
        return "?"
    keys = {}
    for binding in name.findall("KEYBINDING"):
        kv = binding.find("KEYVALUE")
        if kv is not None:
            keys[binding.get("NAME")] = canon_scalar(KEYVALUE_TYPES.get(kv.get("VALUETYPE", "string"),
                                                                        "string"), kv.text or "")
        else:
            keys[binding.get("NAME")] = "ref:" + xml_path(binding.find("VALUE.REFERENCE"))
    return path_text(name.get("CLASSNAME"), keys)


def xml_property(prop):
    cimtype = prop.get("TYPE")
    if prop.tag == "PROPERTY.REFERENCE":
        ref = prop.find("VALUE.REFERENCE")
        return None if ref is None else "ref:" + xml_path(ref)
    if prop.tag == "PROPERTY.ARRAY":
        array = prop.find("VALUE.ARRAY")
        if array is None:
            return None
        return tuple(canon_scalar(cimtype, v.text or "") for v in array.findall("VALUE"))
    value = prop.find("VALUE")
    return None if value is None else canon_scalar(cimtype, value.text or "")


def xml_answer(text):
    """(code, items) of the last CIM-XML response in wbemcli -dx output."""
    start = text.rfind("<?xml")
    if start < 0:
        return None
    body = text[start:]
    end = body.rfind("</CIM>")
    if end < 0:
        return None
    root = ET.fromstring(body[:end + 6])
    error = root.find(".//ERROR")
    if error is not None:
        return int(error.get("CODE")), []
    items = []
    returned = root.find(".//IRETURNVALUE")
    if returned is None:
        return 0, items
    for node in returned:
        instance = node if node.tag == "INSTANCE" else node.find(".//INSTANCE")
        if instance is not None:
            props = {}
            for prop in instance:
                if prop.tag.startswith("PROPERTY"):
                    props[prop.get("NAME").lower()] = xml_property(prop)
            items.append((instance.get("CLASSNAME"), props))
        elif node.tag in ("INSTANCENAME", "OBJECTPATH", "VALUE.OBJECTPATH", "INSTANCEPATH"):
            name = node if node.tag == "INSTANCENAME" else node.find(".//INSTANCENAME")
            items.append(xml_path(name))
    return 0, items


# --- pywbem


def pywbem_value(pywbem, value, cimtype):
    if value is None:
        return None
    if isinstance(value, list):
        return tuple(pywbem_value(pywbem, v, cimtype) for v in value)
    if isinstance(value, pywbem.CIMInstanceName):
        return "ref:" + pywbem_path(pywbem, value)
    if isinstance(value, bool):
        return "TRUE" if value else "FALSE"
    if isinstance(value, int):
        return str(int(value))
    if isinstance(value, float):
        return repr(float(value))
    return str(value)


def pywbem_path(pywbem, name):
    return path_text(name.classname, {k: pywbem_value(pywbem, v, None) for k, v in name.keybindings.items()})


def pywbem_items(pywbem, results):
    items = []
    for r in results:
        if isinstance(r, pywbem.CIMInstance):
            items.append((r.classname, {p.name.lower(): pywbem_value(pywbem, p.value, p.type)
                                        for p in r.properties.values()}))
        elif isinstance(r, tuple) and len(r) == 2 and isinstance(r[1], pywbem.CIMInstance):
            inst = r[1]
            items.append((inst.classname, {p.name.lower(): pywbem_value(pywbem, p.value, p.type)
                                           for p in inst.properties.values()}))
        elif isinstance(r, pywbem.CIMInstanceName):
            items.append(pywbem_path(pywbem, r))
        else:
            items.append(("?", {"?": repr(r)}))
    return items


# ---------------------------------------------------------------------------


class Request:
    """One operation: op in ei ein gi ai ain ri rin; target a class or
    (class, [(key, value)]); assoc the association class; props the
    property list or None."""

    def __init__(self, op, cls, keys=None, assoc=None, props=None, group="regular", note=""):
        self.op, self.cls, self.keys, self.assoc, self.props = op, cls, keys, assoc, props
        self.group, self.note = group, note

    def target_text(self, escape_backslash=True):
        if not self.keys:
            return self.cls
        return self.cls + "." + ",".join(f"{k}={quote_value(v, escape_backslash)}"
                                         for k, v in self.keys)

    def label(self):
        target = self.target_text()
        if len(target) > 160:
            target = target[:150] + f"...({len(target)} chars)"
        text = f"{self.op} {target}"
        if self.assoc:
            text += f" {'-ac' if self.op in ('ai', 'ain') else '-arc'} {self.assoc}"
        if self.props is not None:
            text += " props=" + ",".join(self.props)
        if self.note:
            text += f" [{self.note}]"
        return text

    def unfiltered(self):
        return Request(self.op, self.cls, self.keys, self.assoc, None, self.group, self.note)

    def cache_key(self):
        return json.dumps([self.op, self.cls, self.keys, self.assoc, self.props])

    def zeda_args(self):
        args = []
        for p in self.props or []:
            args += ["--property", p]
        if self.op in ("ei", "ein", "gi"):
            return args + [self.op, self.target_text()]
        args += [self.op, self.target_text()]
        if self.op in ("ai", "ain"):
            return args + ["--assoc-class", self.assoc]
        # References: a client's ResultClass is the association class, and
        # the object manager hands it to the provider of that class.
        return args + ["--provider", self.assoc, "--result-class", self.assoc]


class Failure(Exception):
    pass


class Watch:
    """The provider processes of the module in the object manager's session,
    and the new lines of its logs."""

    def __init__(self, cimom, state, logs):
        self.cimom = cimom
        self.state = state
        self.environ_checked = {}
        with open(os.path.join(state, "pid")) as f:
            self.session = int(f.read().strip())
        self.known = {}  # pid -> first request that saw it
        self.checked = set()
        self.logs = {path: (os.path.getsize(path) if os.path.exists(path) else 0) for path in logs}
        self.errors = [re.compile(p, re.I) for p in LOG_ERRORS[cimom]]
        self.routine = [re.compile(p) for p in LOG_ROUTINE[cimom]]
        self.scan("(start)")

    def session_pids(self):
        """The processes of the object manager's session, and the descendants
        of its first process that left it (OpenPegasus' provider agents)."""
        parent, ours = {}, set()
        marker = f"PEGASUS_HOME={os.path.abspath(self.state)}/home".encode()
        for name in os.listdir("/proc"):
            if not name.isdigit():
                continue
            try:
                with open(f"/proc/{name}/stat") as f:
                    stat = f.read()
            except OSError:
                continue
            fields = stat[stat.rfind(")") + 2:].split()
            pid = int(name)
            parent[pid] = int(fields[1])
            if int(fields[3]) == self.session or pid == self.session:
                ours.add(pid)
            elif self.cimom == "pegasus":
                # Provider agents leave the session and are reparented to
                # init: they carry this state's PEGASUS_HOME.
                if pid not in self.environ_checked:
                    self.environ_checked[pid] = False
                    try:
                        with open(f"/proc/{name}/environ", "rb") as f:
                            self.environ_checked[pid] = marker in f.read().split(b"\0")
                    except OSError:
                        pass
                if self.environ_checked[pid]:
                    ours.add(pid)
        added = True
        while added:
            added = False
            for pid, ppid in parent.items():
                if pid not in ours and ppid in ours:
                    ours.add(pid)
                    added = True
        return ours

    def scan(self, label):
        """Problems since the last scan: provider processes that ended."""
        problems = []
        alive = set(self.session_pids())
        for pid, since in list(self.known.items()):
            if pid not in alive:
                problems.append(f"provider process {pid} (up since {since}) ended")
                del self.known[pid]
        for pid in alive - self.checked:
            try:
                with open(f"/proc/{pid}/maps") as f:
                    maps = f.read()
            except OSError:
                continue
            if MODULE_LIBRARY in maps:
                self.known[pid] = label
                self.checked.add(pid)
            # A process forks before it loads the module: look again later.
        return problems

    def new_log_lines(self):
        lines = []
        for path, offset in list(self.logs.items()):
            if not os.path.exists(path):
                continue
            size = os.path.getsize(path)
            if size < offset:
                offset = 0
            if size == offset:
                continue
            with open(path, "rb") as f:
                f.seek(offset)
                data = f.read(size - offset)
            self.logs[path] = size
            for line in data.decode("utf-8", "replace").splitlines():
                if any(r.search(line) for r in self.routine):
                    continue
                if any(r.search(line) for r in self.errors):
                    lines.append(f"{os.path.basename(path)}: {line.strip()[:300]}")
        return lines


class Comparer:
    def __init__(self, args):
        self.args = args
        self.cimom = args.cimom
        self.rules_used = {}
        self.exclusions_used = {}
        self.failures = []  # run-level failures (crash, lost connection, log)
        self.zeda_cache = {}
        if args.zeda_cache and os.path.exists(args.zeda_cache):
            with open(args.zeda_cache) as f:
                self.zeda_cache = json.load(f)
        self.zeda_env = dict(os.environ)
        for key in list(self.zeda_env):
            if key.startswith("PELKA_"):
                del self.zeda_env[key]
        with open(args.env_file) as f:
            for line in f:
                line = line.rstrip("\n")
                if line and not line.startswith("#"):
                    name, _, value = line.partition("=")
                    self.zeda_env[name] = value
        if args.zeda_data:
            self.zeda_env["PELKA_PROGRAM_DATA"] = args.zeda_data
        self.pywbem = load_pywbem(args.pywbem)
        self.conn = None
        self.reconnects = 0
        self.connect()
        self.classes = {}
        self.watch = Watch(args.cimom, args.state, args.log)

    # --- clients

    def connect(self):
        self.conn = self.pywbem.WBEMConnection(self.args.url, default_namespace=self.args.namespace,
                                               no_verification=True, timeout=self.args.timeout)

    def zeda(self, req):
        key = req.cache_key()
        if key not in self.zeda_cache:
            done = subprocess.run([self.args.zeda_cim, "--format", "json"] + req.zeda_args(),
                                  capture_output=True, env=self.zeda_env, timeout=120)
            stderr = done.stderr.decode("utf-8", "replace")
            if done.returncode == 2 and "factory missing" in stderr:
                # The module has no provider of this kind for the class.
                self.zeda_cache[key] = [NO_PROVIDER, []]
                return NO_PROVIDER, []
            if done.returncode not in (0, 1):
                raise Failure(f"zeda-cim failed ({done.returncode}) for {req.label()}: "
                              f"{done.stderr.decode('utf-8', 'replace').strip()}")
            code, items = zeda_answer(json.loads(done.stdout))
            self.zeda_cache[key] = [code, items]
        code, items = self.zeda_cache[key]
        # JSON (the cache file) keeps no tuples: arrays come back as lists.
        return code, [i if isinstance(i, str) else
                      (i[0], {k: tuple(v) if isinstance(v, list) else v for k, v in i[1].items()})
                      for i in items]

    def wbemcli(self, req, timeout):
        # wbemcli takes a backslash in a key value as it stands.
        url = f"{self.args.url}/{self.args.namespace}:{req.target_text(escape_backslash=False)}"
        argv = ["wbemcli", req.op, "-dx", "-nl"]
        if req.op in ("ai", "ain"):
            argv += ["-ac", req.assoc]
        elif req.op in ("ri", "rin"):
            argv += ["-arc", req.assoc]
        argv.append(url)
        if req.props is not None:
            argv.append(",".join(req.props))
        try:
            done = subprocess.run(argv, capture_output=True, timeout=timeout)
        except subprocess.TimeoutExpired:
            return None, f"no answer within {timeout} s"
        text = done.stderr.decode("utf-8", "replace")
        try:
            answer = xml_answer(text)
        except ET.ParseError as e:
            return None, f"unreadable CIM-XML ({e})"
        if answer is None:
            tail = (done.stdout + done.stderr).decode("utf-8", "replace").strip().splitlines()[-3:]
            return None, "no CIM-XML answer (connection lost?): " + " | ".join(tail)
        return answer, None

    def pywbem_call(self, req):
        c = self.conn
        path = None
        if req.keys is not None:
            path = self.pywbem.CIMInstanceName(req.cls, keybindings=dict(req.keys),
                                               namespace=self.args.namespace)
        props = req.props
        if req.op == "ei":
            return c.EnumerateInstances(req.cls, PropertyList=props)
        if req.op == "ein":
            return c.EnumerateInstanceNames(req.cls)
        if req.op == "gi":
            return [c.GetInstance(path, PropertyList=props)]
        if req.op == "ai":
            return c.Associators(path, AssocClass=req.assoc, PropertyList=props)
        if req.op == "ain":
            return c.AssociatorNames(path, AssocClass=req.assoc)
        if req.op == "ri":
            return c.References(path, ResultClass=req.assoc, PropertyList=props)
        return c.ReferenceNames(path, ResultClass=req.assoc)

    def pywbem_ask(self, req):
        try:
            return (0, pywbem_items(self.pywbem, self.pywbem_call(req))), None
        except self.pywbem.CIMError as e:
            return (e.status_code, []), None
        except (self.pywbem.ConnectionError, self.pywbem.TimeoutError, self.pywbem.HTTPError,
                self.pywbem.AuthError, self.pywbem.ParseError) as e:
            self.reconnects += 1
            self.connect()
            return None, f"{type(e).__name__}: {str(e)[:200]} (connection opened again)"

    # --- class definitions (of the object manager itself)

    def class_info(self, name):
        key = name.lower()
        if key not in self.classes:
            try:
                cls = self.conn.GetClass(name, LocalOnly=False, IncludeQualifiers=True)
            except self.pywbem.Error:
                self.classes[key] = None
                return None
            props = {}
            for p in cls.properties.values():
                is_key = "Key" in p.qualifiers and bool(p.qualifiers["Key"].value)
                props[p.name.lower()] = (p.name, is_key, pywbem_value(self.pywbem, p.value, p.type))
            self.classes[key] = props
        return self.classes[key]

    def keys_of(self, name):
        info = self.class_info(name) or {}
        return [v[0] for v in info.values() if v[1]]

    def non_keys_of(self, name):
        info = self.class_info(name) or {}
        return [v[0] for v in info.values() if not v[1]]

    # --- comparison

    def use(self, rule, count=1):
        assert rule in RULES[self.cimom], rule
        self.rules_used[rule] = self.rules_used.get(rule, 0) + count

    def compare_instance(self, cls, ours, theirs, props, rules):
        """The differences not covered by a rule (empty when equal), recording
        the rules used in `rules`."""
        info = self.class_info(cls) or {}
        listed = None if props is None else {p.lower() for p in props}
        reasons = []
        for name in sorted(set(ours) | set(theirs)):
            in_ours, in_theirs = name in ours, name in theirs
            if in_ours and in_theirs:
                if ours[name] != theirs[name]:
                    reasons.append(f"{name}: zeda-cim {ours[name]!r}, {self.cimom} {theirs[name]!r}")
                continue
            if in_ours:
                if listed is not None and name not in listed:
                    is_key = info.get(name, (None, False))[1]
                    if self.cimom == "sfcb" and is_key:
                        rules.add("keys-outside-property-list")
                        continue
                    if self.cimom == "pegasus":
                        rules.add("property-list-applied-by-server")
                        continue
                reasons.append(f"{name} {ours[name]!r} missing")
                continue
            # Only theirs: filled from the class.
            value = theirs[name]
            default = info.get(name, (None, False, None))[2]
            if name in info and (value is None or value == default) \
                    and (listed is None or name in listed):
                rules.add("fills-from-class")
                continue
            reasons.append(f"{name} {value!r} added (class default {default!r})")
        return reasons

    def match_instances(self, oitems, titems, props, rules):
        """None when the instances match one for one, else why not."""
        remaining = {}
        for cls, tprops in titems:
            remaining.setdefault(cls.lower(), []).append(tprops)
        for cls, oprops in oitems:
            candidates = remaining.get(cls.lower(), [])
            best = [f"no {cls} instance from {self.cimom}"]
            for i, tprops in enumerate(candidates):
                trial = set()
                why = self.compare_instance(cls, oprops, tprops, props, trial)
                if not why:
                    rules |= trial
                    del candidates[i]
                    break
                if len(best) != 1 or best[0].startswith("no ") or len(why) < len(best):
                    best = why
            else:
                return f"{cls}: " + "; ".join(best[:4]) + (" ..." if len(best) > 4 else "")
        return None

    def compare(self, req, ours, theirs):
        """(identical, reason, rules used)."""
        ocode, oitems = ours
        tcode, titems = theirs
        rules = set()
        if ocode == 0 and tcode != 0 and not oitems:
            if req.op == "gi" and self.cimom == "sfcb" and tcode == 6:
                rules.add("empty-get-instance-not-found")
                return True, None, rules
            if req.op == "gi" and self.cimom == "pegasus" and tcode == 1:
                rules.add("empty-get-instance-failed")
                return True, None, rules
        if ocode == NO_PROVIDER and req.op in ("ei", "ein") and tcode == 0 and not titems:
            rules.add("association-only-class-enumerates-empty")
            return True, None, rules
        if self.cimom == "sfcb" and req.note == "unknown-class" and ocode == NO_PROVIDER \
                and tcode == 6:
            rules.add("unknown-association-class-not-found")
            return True, None, rules
        if self.cimom == "pegasus":
            if ocode == 7 and req.op in ("ain", "rin") and tcode == 0 and not titems:
                rules.add("names-not-supported-empty")
                return True, None, rules
            if tcode == 12 and ocode != 0 and any(v == "" for _, v in (req.keys or [])):
                rules.add("empty-keys-dropped")
                return True, None, rules
        if self.cimom == "pegasus" and req.op in ("ai", "ain", "ri", "rin"):
            if tcode == 0 and not titems and req.note == "unlinked":
                rules.add("unlinked-association-empty")
                return True, None, rules
            if tcode == 4 and req.note == "unknown-class" and ocode == NO_PROVIDER:
                rules.add("unknown-class-invalid-parameter")
                return True, None, rules
        if ocode != tcode:
            return False, f"status zeda-cim {ocode}, {self.cimom} {tcode}", rules
        if len(oitems) != len(titems):
            return False, f"{len(oitems)} results from zeda-cim, {len(titems)} from {self.cimom}", rules
        names = [i for i in oitems if isinstance(i, str)]
        if names or any(isinstance(i, str) for i in titems):
            if sorted(map(str, oitems)) != sorted(map(str, titems)):
                return False, "different paths", rules
            return True, None, rules
        why = self.match_instances(oitems, titems, req.props, rules)
        if why and req.props is not None and self.cimom == "sfcb":
            # sfcb hands the property list to the provider and leaves it at
            # that: the instances may be the unfiltered ones.
            fcode, fitems = self.zeda(req.unfiltered())
            trial = set()
            if fcode == tcode and len(fitems) == len(titems):
                unfiltered_why = self.match_instances(fitems, titems, None, trial)
                if unfiltered_why is None:
                    rules |= trial | {"property-list-left-to-provider"}
                    return True, None, rules
                why += f" (against the unfiltered answer: {unfiltered_why})"
        if why:
            return False, why, rules
        return True, None, rules

    # --- the run

    def ask(self, req, results):
        ours = self.zeda(req)
        timeout = self.args.timeout
        for client in ("wbemcli", "pywbem"):
            excluded = self.excluded(req, client)
            tally = results.setdefault((client, req.group), {"same": 0, "total": 0, "skipped": 0})
            if excluded:
                self.exclusions_used[excluded] = self.exclusions_used.get(excluded, 0) + 1
                tally["skipped"] += 1
                continue
            tally["total"] += 1
            started = time.monotonic()
            if client == "wbemcli":
                theirs, problem = self.wbemcli(req, timeout)
            else:
                theirs, problem = self.pywbem_ask(req)
            took = time.monotonic() - started
            label = f"{client}: {req.label()}"
            for p in self.watch.scan(label):
                self.failures.append(f"{p}, after {label}")
            for line in self.watch.new_log_lines():
                self.failures.append(f"log line after {label}: {line}")
            if problem:
                self.failures.append(f"{label}: {problem}")
                print(f"FAILED   {label}: {problem}", flush=True)
                continue
            same, reason, rules = self.compare(req, ours, theirs)
            if same:
                tally["same"] += 1
                for r in rules:
                    self.use(r)
            else:
                print(f"differs  {label}: {reason}", flush=True)
            if self.args.verbose:
                print(f"  {took:.3f} s {label}", flush=True)

    def excluded(self, req, client):
        values = [str(v) for _, v in (req.keys or [])]
        if client == "wbemcli" and any('"' in v for v in values):
            return "wbemcli-no-quotes-in-keys"
        if self.args.no_exclusions:
            return None
        if self.cimom == "sfcb":
            longest = max((len(v) for v in values), default=0)
            if (req.op == "ri" and longest > 1000) or (req.op == "ai" and longest > 10000):
                return "objectpath-fixed-buffers"
            if req.op == "ri" and any('"' in v for v in values):
                return "references-quote-in-key"
        return None

    def property_lists(self, cls):
        """The two property lists of a class: [a key, a non-key] and [a non-key]."""
        keys, others = self.keys_of(cls), self.non_keys_of(cls)
        lists = []
        if keys and others:
            lists.append([keys[0], others[-1]])
        elif keys:
            lists.append([keys[0]])
        if others:
            lists.append([others[0]])
        return lists

    def requests(self):
        sample = max(1, self.args.sample)
        reqs = []
        endpoints = {}
        instances = {}
        for cls in ELEMENTS + ASSOCIATIONS + list(WALK_ONLY):
            reqs.append(Request("ei", cls))
            reqs.append(Request("ein", cls))
            if not self.args.plain_enumerations:
                for pl in self.property_lists(cls):
                    reqs.append(Request("ei", cls, props=pl))
            if cls in WALK_ONLY:
                continue
            code, items = self.zeda(Request("ei", cls))
            if cls in ELEMENTS:
                keys = self.keys_of(cls)
                instances[cls] = [[(k, props[k.lower()]) for k in keys if k.lower() in props]
                                  for _, props in items]
            else:
                ends = []
                for _, props in items:
                    for value in props.values():
                        if isinstance(value, str) and value.startswith("ref:") and value not in ends:
                            ends.append(value)
                endpoints[cls] = ends
        for walk, like in WALK_ONLY.items():
            endpoints[walk] = endpoints.get(like, [])
        for cls, paths in instances.items():
            for keys in paths[::sample]:
                reqs.append(Request("gi", cls, keys))
                for pl in self.property_lists(cls):
                    reqs.append(Request("gi", cls, keys, props=pl))
        for assoc, ends in endpoints.items():
            for end in ends[::sample]:
                cls, keys = parse_ref(end[4:], self)
                for op in ("ai", "ain", "ri", "rin"):
                    reqs.append(Request(op, cls, keys, assoc))
                for pl in self.property_lists(assoc):
                    reqs.append(Request("ri", cls, keys, assoc, props=pl))
                code, items = self.zeda(Request("ai", cls, keys, assoc))
                if items and not isinstance(items[0], str):
                    for pl in self.property_lists(items[0][0]):
                        reqs.append(Request("ai", cls, keys, assoc, props=pl))
        return reqs

    def hostile_requests(self):
        rng = random.Random(20241125)
        printable = "".join(chr(c) for c in range(0x20, 0x7f))
        values = {
            "2000 chars": "D" * 2000,
            "30000 chars": "ZEDA:nas1:DiskExtent" + "9" * 29980,
            "empty": "",
            "quotes": 'ZEDA:"nas1":Disk"Extent"0:1"',
            "backslashes": "ZEDA:nas1\\:DiskExtent\\0:1\\",
            "utf-8": "ZEDA:Zürich-диск-磁盘-💾:DiskExtent0:1",
            "random printable": "".join(rng.choice(printable) for _ in range(300)),
        }
        reqs = []
        drive_keys = ["SystemCreationClassName", "SystemName", "CreationClassName", "DeviceID"]
        for what, value in values.items():
            for cls in ELEMENTS:
                keys = self.keys_of(cls) or drive_keys
                reqs.append(Request("gi", cls, [(k, value) for k in keys], group="hostile", note=what))
            # A real NAS with a hostile device, and the reverse.
            for cls, system_key in (("ZEDA_DiskDrive", "SystemName"),
                                    ("ZEDA_StorageExtent_Disk", "SystemName")):
                keys = [(k, value if k != system_key else "ZEDA:nas1") for k in self.keys_of(cls)]
                reqs.append(Request("gi", cls, keys, group="hostile", note=what + ", NAS nas1"))
                for assoc in ASSOCIATIONS + list(WALK_ONLY):
                    if self.links(assoc, cls):
                        for op in ("ai", "ri"):
                            reqs.append(Request(op, cls, [(k, value) for k in self.keys_of(cls)],
                                                assoc, group="hostile", note=what))
                            reqs.append(Request(op, cls, keys, assoc, group="hostile",
                                                note=what + ", NAS nas1"))
            pool = "ZEDA_StoragePool_Primordial"
            for assoc in ("ZEDA_ConcreteComponent_Primordial", "ZEDA_AssociatedComponentExtent_Primordial"):
                for op in ("ai", "ri"):
                    reqs.append(Request(op, pool, [("InstanceID", value)], assoc, group="hostile",
                                        note=what))
        # A drive and an extent asked through the association classes that do
        # not reference them, and through a class that does not exist.
        for cls in ("ZEDA_DiskDrive", "ZEDA_StorageExtent_Disk"):
            code, items = self.zeda(Request("ei", cls))
            if not items or isinstance(items[0], str):
                continue
            keys = [(k, items[0][1].get(k.lower())) for k in self.keys_of(cls)]
            for assoc in ASSOCIATIONS + list(WALK_ONLY):
                if not self.links(assoc, cls):
                    for op in ("ai", "ri"):
                        reqs.append(Request(op, cls, keys, assoc, group="hostile", note="unlinked"))
            for op in ("ai", "ri"):
                reqs.append(Request(op, cls, keys, "ZEDA_NoSuchAssociation", group="hostile",
                                    note="unknown-class"))
        return reqs

    def links(self, assoc, cls):
        """Whether some reference of the association may point to the class."""
        try:
            definition = self.conn.GetClass(assoc, LocalOnly=False)
        except self.pywbem.Error:
            return False
        for p in definition.properties.values():
            if p.type == "reference" and p.reference_class:
                try:
                    self.conn.GetClass(cls, LocalOnly=False)
                except self.pywbem.Error:
                    return False
                if is_subclass(self, cls, p.reference_class):
                    return True
        return False

    def run(self):
        results = {}
        started = time.monotonic()
        reqs = [] if self.args.hostile_only else self.requests()
        if self.args.hostile or self.args.hostile_only:
            reqs += self.hostile_requests()
        for req in reqs:
            self.ask(req, results)
        for p in self.watch.scan("(end)"):
            self.failures.append(p)
        for line in self.watch.new_log_lines():
            self.failures.append(f"log line: {line}")
        if self.args.zeda_cache:
            with open(self.args.zeda_cache, "w") as f:
                json.dump(self.zeda_cache, f)
        ok = True
        for (client, group), t in sorted(results.items()):
            skipped = f", {t['skipped']} skipped (exclusions)" if t["skipped"] else ""
            print(f"{self.cimom} {client} {self.args.label}{' hostile' if group == 'hostile' else ''}: "
                  f"{t['same']}/{t['total']} identical{skipped}")
            ok = ok and t["same"] == t["total"]
        if self.rules_used:
            print("  rules applied: " + ", ".join(f"{r} ({n})" for r, n in sorted(self.rules_used.items())))
        if self.exclusions_used:
            print("  exclusions: " + ", ".join(f"{r} ({n})" for r, n in sorted(self.exclusions_used.items())))
        pids = sorted(self.watch.known)
        print(f"  provider processes with the module: {pids or 'none'}; "
              f"pywbem reconnections: {self.reconnects}; {time.monotonic() - started:.0f} s")
        for f in self.failures[:40]:
            print(f"FAILURE  {f}")
        if len(self.failures) > 40:
            print(f"FAILURE  ... and {len(self.failures) - 40} more")
        return 0 if ok and not self.failures else 1


_SUBCLASS = {}


def is_subclass(comparer, cls, parent):
    key = (cls.lower(), parent.lower())
    if key not in _SUBCLASS:
        name, found = cls, False
        while name:
            if name.lower() == parent.lower():
                found = True
                break
            try:
                name = comparer.conn.GetClass(name, LocalOnly=True).superclass
            except comparer.pywbem.Error:
                break
        _SUBCLASS[key] = found
    return _SUBCLASS[key]


def parse_ref(text, comparer):
    """Class and keys [(name, value)] of a canonical reference text; key
    names take the spelling of the class definition."""
    cls, _, rest = text.partition(".")
    info = comparer.class_info(cls) or {}
    keys = []
    for part in split_keys(rest):
        name, _, value = part.partition("=")
        keys.append((info.get(name, (name,))[0], value))
    real = cls
    for element in ELEMENTS + ["ZEDA_StoragePool_Primordial", "ZEDA_ComputerSystem"]:
        if element.lower() == cls:
            real = element
    return real, keys


def split_keys(text):
    # Canonical key texts hold no commas of their own in this module's keys
    # except inside nested references, which never occur as endpoint keys.
    return [p for p in text.split(",") if p] if text else []


def print_rules(cimoms):
    for cimom in cimoms:
        print(f"{cimom}: differences from zeda-cim that are the object manager's own behaviour")
        for name, text in RULES[cimom].items():
            print(f"  {name}: {text}")
        for name, text in EXCLUSIONS[cimom].items():
            print(f"  excluded, {name}: {text}")
        if not EXCLUSIONS[cimom]:
            print("  (no request is excluded)")
    print("both object managers, requests a client cannot send")
    for name, text in CLIENT_EXCLUSIONS.items():
        print(f"  excluded, {name}: {text}")


def main(argv):
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--cimom", choices=["sfcb", "pegasus"])
    parser.add_argument("--rules", action="store_true", help="print the rules and exclusions, and exit")
    parser.add_argument("--url")
    parser.add_argument("--namespace", default="root/cimv2")
    parser.add_argument("--zeda-cim")
    parser.add_argument("--env-file")
    parser.add_argument("--zeda-data")
    parser.add_argument("--zeda-cache")
    parser.add_argument("--state")
    parser.add_argument("--label", default="inventory")
    parser.add_argument("--sample", type=int, default=1)
    parser.add_argument("--hostile", action="store_true")
    parser.add_argument("--plain-enumerations", action="store_true",
                        help="enumerate without property lists only (they are asked of "
                             "getInstance, associators and references still)")
    parser.add_argument("--hostile-only", action="store_true", help=argparse.SUPPRESS)
    parser.add_argument("--no-exclusions", action="store_true",
                        help="ask the excluded requests too (to see whether they still fail)")
    parser.add_argument("--log", action="append", default=[])
    parser.add_argument("--pywbem")
    parser.add_argument("--timeout", type=float, default=60.0)
    parser.add_argument("--verbose", action="store_true")
    args = parser.parse_args(argv)
    if args.rules:
        print_rules([args.cimom] if args.cimom else ["sfcb", "pegasus"])
        return 0
    for name in ("cimom", "url", "zeda_cim", "env_file", "state", "pywbem"):
        if getattr(args, name) is None:
            parser.error(f"--{name.replace('_', '-')} is required")
    for name in ("zeda_cim", "env_file"):
        if not os.path.isfile(getattr(args, name)):
            parser.error(f"--{name.replace('_', '-')} {getattr(args, name)}: no such file")
    if not os.path.isfile(os.path.join(args.state, "pid")):
        parser.error(f"--state {args.state}: no pid file (object manager not started?)")
    if args.sample < 1:
        parser.error("--sample must be 1 or more")
    try:
        return Comparer(args).run()
    except Failure as e:
        print(f"error: {e}", file=sys.stderr)
        return 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
