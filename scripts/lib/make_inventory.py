#!/usr/bin/env python3
"""Writes a deterministic inventory file (the format of examples/inventory.json).

usage: make_inventory.py N_NAS DISKS_PER_NAS [OUTPUT]

NAS devices "gen00", "gen01", ...; disk identifiers "e:NNNNN" of one width, so
that none is a substring of another. Disks come in RAID groups of 10: the
group lists its data disks and one spare. Every 7th disk is an SSD, every
23rd is free (in no group), the identities, firmware, interface types,
statuses and health replies cycle through fixed lists, so every value the
module maps (each status word, SAS/NL-SAS/SATA, health codes 0, 1, 2, 5) occurs
on every NAS. The same arguments always write the same bytes (to OUTPUT, else
standard output).
"""
import json
import sys

GROUP = 10
INTERFACES = ["SAS", "SATA", "NL-SAS", "SATA", "SAS"]
STATUSES = ["ok"] * 11 + ["degraded", "ok", "predictive-failure", "ok", "error", "ok", "stopped",
                          "ok", "no-contact", "ok", "unknown"]
HEALTH = [(0, "Good")] * 9 + [(1, "Medium error on last read"),
                              (2, "Reallocated sector count above threshold"),
                              (5, "SMART predicts failure within 24 hours")]
MODELS = [("WDC WD40EFRX-68N32N0", "WD40EFRX", "82.00A82", 4000787030016, 5400),
          ("Seagate ST8000VN004-2M2101", "ST8000VN004", "SC60", 8001563222016, 7200),
          ("HGST HUH721212AL5200", "HUH721212AL5200", "A3Z4", 12000138625024, 7200)]
SSD = ("Samsung SSD 870 EVO 500GB", "MZ-77E500", "SVT01B6Q", 500107862016, 0)


def disk(nas_index, d):
    ssd = d % 7 == 3
    product, model, firmware, capacity, rpm = SSD if ssd else MODELS[(d + nas_index) % len(MODELS)]
    code, message = HEALTH[d % len(HEALTH)]
    record = {"id": f"e:{d:05d}", "status": STATUSES[d % len(STATUSES)],
              "interfaceType": INTERFACES[(d // 3) % len(INTERFACES)],
              "firmwareVersion": firmware, "capacity": capacity, "rpm": rpm,
              "health": {"status": code, "message": message},
              "identity": {"product": product, "model": model,
                           "serial": f"SN{nas_index:02d}{d:06d}"}}
    if ssd:
        record["isSsd"] = True
    if d % 23 == 11:
        record["isFree"] = True
    if d % GROUP == GROUP - 1:
        record["isSpare"] = True
    return record


def nas(index, count):
    disks = [disk(index, d) for d in range(count)]
    groups = []
    for first in range(0, count, GROUP):
        members = [r for r in disks[first:first + GROUP] if not r.get("isFree")]
        groups.append({"dataDisks": [r["id"] for r in members if not r.get("isSpare")],
                       "spareDisks": [r["id"] for r in members if r.get("isSpare")]})
    return {"name": f"gen{index:02d}", "disks": disks, "groups": groups}


def main(argv):
    if len(argv) not in (3, 4):
        sys.stderr.write("usage: make_inventory.py N_NAS DISKS_PER_NAS [OUTPUT]\n")
        return 2
    try:
        n_nas, per_nas = int(argv[1]), int(argv[2])
    except ValueError:
        sys.stderr.write(f"make_inventory.py: N_NAS and DISKS_PER_NAS must be whole numbers, "
                         f"not {argv[1]!r} {argv[2]!r}\n")
        return 2
    if not 1 <= n_nas <= 99 or not 0 <= per_nas <= 99999:
        sys.stderr.write("make_inventory.py: N_NAS must be 1 to 99 and DISKS_PER_NAS 0 to 99999\n")
        return 2
    # One disk a line: readable, and diffs of two versions stay small.
    lines = ['{"nas": [']
    for i in range(n_nas):
        record = nas(i, per_nas)
        lines.append(f'  {{"name": {json.dumps(record["name"])}, "disks": [')
        lines.append(",\n".join("    " + json.dumps(r, sort_keys=True) for r in record["disks"]))
        lines.append(f'  ], "groups": {json.dumps(record["groups"])}}}' + ("," if i < n_nas - 1 else ""))
    lines.append("]}")
    text = "\n".join(lines) + "\n"
    json.loads(text)
    if len(argv) == 4:
        with open(argv[3], "w", encoding="utf-8") as out:
            out.write(text)
    else:
        sys.stdout.write(text)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
