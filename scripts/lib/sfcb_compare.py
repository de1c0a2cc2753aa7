#!/usr/bin/env python3
"""Compares the module's answers through a real sfcb (wbemcli) with zeda-cim's.

usage: sfcb_compare.py ZEDA_CIM INVENTORY PROGRAM_DATA URL_BASE
  URL_BASE  e.g. http://127.0.0.1:15988/root/cimv2

Runs, for every class: enumerate-instances; get-instance of every element
instance; associators and references from every endpoint of every
association class, always naming the association class. An answer is
identical when the status code is the same and the instances match one for
one on every property zeda-cim shows (an object manager adds the properties
the module leaves unset). Prints one line per difference and "N/M identical".
"""
import json
import re
import subprocess
import sys
import xml.etree.ElementTree as ET

ELEMENTS = {
    "ZEDA_DiskDrive": ["SystemCreationClassName", "SystemName", "CreationClassName", "DeviceID"],
    "ZEDA_StorageExtent_Disk": ["SystemCreationClassName", "SystemName", "CreationClassName", "DeviceID"],
    "ZEDA_PhysicalPackage_Disk": ["CreationClassName", "Tag"],
    "ZEDA_SoftwareIdentity_Disk": ["InstanceID"],
}
ASSOCIATIONS_WITH_INSTANCES = [
    "ZEDA_SystemDevice_DiskDrive", "ZEDA_SystemDevice_StorageExtent_Disk", "ZEDA_MediaPresent",
    "ZEDA_Realizes_Disk", "ZEDA_ElementSoftwareIdentity_Disk", "ZEDA_ConcreteComponent_Primordial",
]
# Walked only: its endpoints are those of the pool/extent association.
WALK_ONLY = {"ZEDA_AssociatedComponentExtent_Primordial": "ZEDA_ConcreteComponent_Primordial"}


def quote(value):
    return '"' + str(value).replace("\\", "\\\\").replace('"', '\\"') + '"'


def path_text(classname, keys):
    """Untyped WBEM URI form of a path; keys is a list of (name, value)."""
    if not keys:
        return classname
    return classname + "." + ",".join(f"{k}={quote(v)}" for k, v in keys)


def canonical_path(node):
    """Class and sorted keys of an INSTANCEPATH / LOCALINSTANCEPATH / INSTANCENAME."""
    name = node if node.tag == "INSTANCENAME" else node.find(".//INSTANCENAME")
    if name is None:
        return ""
    keys = []
    for kb in name.findall("KEYBINDING"):
        value = kb.find("KEYVALUE")
        ref = kb.find("VALUE.REFERENCE")
        keys.append((kb.get("NAME"), value.text or "" if value is not None else canonical_path(ref)))
    return name.get("CLASSNAME") + "." + ",".join(f"{k}={v}" for k, v in sorted(keys))


def property_value(prop):
    if prop.tag == "PROPERTY.REFERENCE":
        ref = prop.find("VALUE.REFERENCE")
        return None if ref is None else canonical_path(ref)
    if prop.tag == "PROPERTY.ARRAY":
        array = prop.find("VALUE.ARRAY")
        return None if array is None else tuple((v.text or "").upper() if prop.get("TYPE") == "boolean"
                                                else (v.text or "") for v in array.findall("VALUE"))
    value = prop.find("VALUE")
    if value is None:
        return None
    text = value.text or ""
    return text.upper() if prop.get("TYPE") == "boolean" else text


def instances(xml_text):
    """(class, {property: value}) of every INSTANCE in a CIM-XML answer; NULLs left out."""
    found = []
    for match in re.finditer(r"<(IRETURNVALUE)>.*?</\1>", xml_text, re.S):
        root = ET.fromstring(match.group(0))
        for inst in root.iter("INSTANCE"):
            props = {}
            for prop in inst:
                if prop.tag.startswith("PROPERTY"):
                    value = property_value(prop)
                    if value is not None:
                        props[prop.get("NAME")] = value
            found.append((inst.get("CLASSNAME"), props))
    return found


def same_instances(ours, theirs):
    remaining = list(theirs)
    for cls, props in ours:
        for i, (tcls, tprops) in enumerate(remaining):
            if tcls == cls and all(tprops.get(k) == v for k, v in props.items()):
                del remaining[i]
                break
        else:
            return False
    return not remaining


class Runner:
    def __init__(self, zeda_cim, inventory, program_data, url_base):
        self.base = [zeda_cim, "--inventory", inventory, "--program-data", program_data]
        self.url = url_base

    def zeda(self, args):
        status = json.loads(subprocess.run(self.base + ["--format", "json"] + args,
                                           capture_output=True, text=True).stdout)
        xml = subprocess.run(self.base + ["--format", "xml"] + args, capture_output=True, text=True).stdout
        return status["status"]["code"], xml, status

    def wbemcli(self, op, target, options):
        done = subprocess.run(["wbemcli", op, "-dx", "-nl"] + options + [f"{self.url}:{target}"],
                              capture_output=True, text=True)
        # -dx writes the CIM-XML exchanged to stderr.
        if done.returncode == 0:
            return 0, done.stderr
        code = re.search(r"wbemcli: Cim: \((\d+)\)", done.stderr + done.stdout)
        return (int(code.group(1)) if code else -1), done.stderr


def endpoints(status_json):
    """Paths referenced by the association instances of a zeda-cim answer."""
    paths = []
    for result in status_json["results"]:
        for prop in result["properties"]:
            if prop["type"] == "reference" and prop["value"]:
                ref = prop["value"]
                paths.append(path_text(ref["classname"], [(k["name"], k["value"]) for k in ref["keys"]]))
    return paths


def main():
    runner = Runner(*sys.argv[1:5])
    checks = []  # (label, zeda args, wbemcli op, target, wbemcli options)
    association_endpoints = {}
    for cls in list(ELEMENTS) + ASSOCIATIONS_WITH_INSTANCES:
        checks.append((f"ei {cls}", ["ei", cls], "ei", cls, []))
        _, _, answer = runner.zeda(["ei", cls])
        if cls in ELEMENTS:
            for result in answer["results"]:
                props = {p["name"]: p["value"] for p in result["properties"]}
                target = path_text(cls, [(k, props[k]) for k in ELEMENTS[cls] if k in props])
                checks.append((f"gi {target}", ["gi", target], "gi", target, []))
        else:
            association_endpoints[cls] = sorted(set(endpoints(answer)))
    for walk_only, like in WALK_ONLY.items():
        association_endpoints[walk_only] = association_endpoints[like]
    for assoc, paths in association_endpoints.items():
        for target in paths:
            checks.append((f"ai {target} -ac {assoc}", ["ai", target, "--assoc-class", assoc],
                           "ai", target, ["-ac", assoc]))
            checks.append((f"ri {target} -arc {assoc}", ["ri", target, "--assoc-class", assoc],
                           "ri", target, ["-arc", assoc]))

    identical = 0
    for label, zeda_args, op, target, options in checks:
        zcode, zxml, _ = runner.zeda(zeda_args)
        scode, sout = runner.wbemcli(op, target, options)
        if zcode == scode and (zcode != 0 or same_instances(instances(zxml), instances(sout))):
            identical += 1
        else:
            print(f"differs: {label} (zeda-cim status {zcode}, sfcb status {scode})")
    print(f"{identical}/{len(checks)} identical")
    return 0 if identical == len(checks) else 1


if __name__ == "__main__":
    sys.exit(main())
