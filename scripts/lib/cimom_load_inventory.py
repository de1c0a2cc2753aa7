#!/usr/bin/python3
"""Writes the second version of an inventory for the load test.

usage: cimom_load_inventory.py INVENTORY_A OUTPUT_B

B is A with two changes on the first NAS: the data disk in the middle of its
disk list that is a member of a group is removed (from the disk list and from
its group), and the first disk's health and status change (health status 5,
"SMART predicts failure within 24 hours"; status "predictive-failure"; when
the disk already has those, health 0 "Good" and status "ok"). Prints one line
naming the removed disk and the changed disk.
"""
import json
import sys


def main(argv):
    if len(argv) != 3:
        sys.stderr.write("usage: cimom_load_inventory.py INVENTORY_A OUTPUT_B\n")
        return 2
    source, output = argv[1], argv[2]
    try:
        with open(source, encoding="utf-8") as f:
            inventory = json.load(f)
    except (OSError, ValueError) as e:
        sys.stderr.write(f"cimom_load_inventory.py: cannot read inventory {source}: {e}\n")
        return 2
    try:
        nas = inventory["nas"][0]
        disks, groups = nas["disks"], nas.get("groups", [])
    except (KeyError, IndexError, TypeError):
        sys.stderr.write(f"cimom_load_inventory.py: {source} has no nas[0].disks\n")
        return 2
    members = {d for g in groups for d in g.get("dataDisks", [])}
    candidates = [i for i, d in enumerate(disks) if d.get("id") in members and i > 0]
    if not candidates:
        sys.stderr.write(f"cimom_load_inventory.py: nas[0] of {source} has no data disk of a group "
                         f"after its first disk\n")
        return 2
    middle = len(disks) // 2
    index = min(candidates, key=lambda i: abs(i - middle))
    removed = disks.pop(index)["id"]
    for g in groups:
        for role in ("dataDisks", "spareDisks"):
            if removed in g.get(role, []):
                g[role] = [d for d in g[role] if d != removed]
    first = disks[0]
    if first.get("health", {}).get("status") == 5:
        first["health"] = {"status": 0, "message": "Good"}
        first["status"] = "ok"
    else:
        first["health"] = {"status": 5, "message": "SMART predicts failure within 24 hours"}
        first["status"] = "predictive-failure"
    try:
        with open(output, "w", encoding="utf-8") as f:
            json.dump(inventory, f, indent=1)
            f.write("\n")
    except OSError as e:
        sys.stderr.write(f"cimom_load_inventory.py: cannot write {output}: {e}\n")
        return 2
    print(f"{output}: {nas.get('name')} without disk {removed}; disk {first['id']} health "
          f"{first['health']['status']}, status {first['status']}")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
