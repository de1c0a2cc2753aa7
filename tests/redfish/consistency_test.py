#!/usr/bin/python3
"""One truth for both protocols: every disk of three inventories read through
zeda-cim (the CIM classes of the module) and through zeda-redfishd (the Redfish
resources), value by value.

Inventories: examples/inventory.json, a generated one of 2,000 disks
(scripts/lib/make_inventory.py 2 1000) and the recorded linux machine of
tests/fixtures/linux. Compared per disk: capacity, disk type and media type,
interconnect and protocol, health and state, firmware, manufacturer, model,
serial number, speed, the pools the disk is in; per pool: its drives and its
totals. The expected Redfish words are derived from the CIM figures by the
table of docs/REDFISH.md, restated here on purpose, so that the service's code
(redfish/src/model/DriveMapping.cpp) is checked against the table, not
against itself. Standard library only."""
import argparse
import base64
import http.client
import json
import os
import socket
import ssl
import subprocess
import sys
import tempfile
import time

USER, PASSWORD = "consistency", "one-truth-Passw0rd"
FAILURES = []

# The table of docs/REDFISH.md, from the CIM figures to the Redfish words.
MEDIA_TYPE = {2: "HDD", 3: "SSD"}
PROTOCOL = {4: "SATA", 5: "SAS"}
OTHER_PROTOCOLS = {None, "NVMe", "USB", "PCIe", "FC"}  # InterconnectType 1 (other)
CONDITION = {  # OperationalStatus: (State, Health when HealthState is 5, FailurePredicted)
    2: ("Enabled", "OK", False), 3: ("Enabled", "Warning", False),
    5: ("Enabled", "Warning", True), 6: ("Enabled", "Critical", False),
    10: ("Disabled", "Warning", False), 12: ("UnavailableOffline", "Critical", False),
}
POOL_IDS = ["PrimordialPool1", "PrimordialPool2", "PrimordialPool3", "PrimordialPool4"]


def expected_status(operational, health_state):
    if operational not in CONDITION:
        return ({"Health": "OK"} if health_state == 5 else {}), False
    state, health, predicted = CONDITION[operational]
    if health == "OK" and health_state != 5:
        health = "Warning"
    return {"State": state, "Health": health}, predicted


def fail(what):
    FAILURES.append(what)
    if len(FAILURES) <= 40:
        print("FAIL:", what, flush=True)


def free_port():
    with socket.socket() as s:
        s.bind(("127.0.0.1", 0))
        return s.getsockname()[1]


class Cim:
    """zeda-cim over one configuration file."""

    def __init__(self, zeda_cim, config, program_data):
        self.base = [zeda_cim, "--config", config, "--program-data", program_data, "--format", "json"]

    def run(self, *args):
        # The answer counts once it is complete, whatever happens after it:
        # a linux source's zeda-cim may still be ending its refresher thread.
        for _ in range(3):
            try:
                out = subprocess.run(self.base + list(args), capture_output=True, text=True,
                                     timeout=20)
                stdout = out.stdout
            except subprocess.TimeoutExpired as timeout:
                stdout = (timeout.stdout or b"").decode()
            try:
                return json.loads(stdout)
            except ValueError:
                continue
        raise RuntimeError("zeda-cim gave no complete answer to " + " ".join(args))

    def instances(self, *args):
        answer = self.run(*args)
        return [{p["name"]: p["value"] for p in r["properties"]} for r in answer.get("results", [])]


class Service:
    """zeda-redfishd over the same configuration file, read with one keep-alive
    HTTPS connection and Basic authentication."""

    def __init__(self, daemon, folder, config):
        self.process = subprocess.Popen([daemon, "--config", config],
                                        stdout=open(os.path.join(folder, "daemon.log"), "w"),
                                        stderr=subprocess.STDOUT)
        self.port = json.load(open(config))["redfish"]["listen"].rsplit(":", 1)[1]
        self.auth = "Basic " + base64.b64encode(f"{USER}:{PASSWORD}".encode()).decode()
        self.connection = None
        for _ in range(150):
            try:
                self.get("/redfish/v1")
                return
            except (OSError, http.client.HTTPException):
                self.connection = None
                if self.process.poll() is not None:
                    break
                time.sleep(0.1)
        raise RuntimeError("zeda-redfishd did not start")

    def get(self, path):
        try:
            return self.get_once(path)
        except (ConnectionError, http.client.HTTPException):
            # The service drops connections idle for long (while zeda-cim runs).
            self.connection = None
            return self.get_once(path)

    def get_once(self, path):
        if self.connection is None:
            ctx = ssl.create_default_context()
            ctx.check_hostname = False
            ctx.verify_mode = ssl.CERT_NONE
            self.connection = http.client.HTTPSConnection("127.0.0.1", int(self.port), context=ctx,
                                                          timeout=20)
        self.connection.request("GET", path, headers={"Authorization": self.auth})
        response = self.connection.getresponse()
        body = response.read()
        if response.status != 200:
            raise RuntimeError(f"GET {path}: {response.status} {body[:200]!r}")
        return json.loads(body)

    def stop(self):
        self.process.terminate()
        self.process.wait(timeout=30)


def cim_view(cim):
    """Per NAS name, per disk identifier, the CIM figures; per NAS, per pool,
    the member identifiers and the totals the CIM answers."""
    view = {}

    def disk(system_name, disk_id):
        nas = system_name.split(":")[-1]
        return view.setdefault(nas, {"disks": {}, "pools": {}})["disks"].setdefault(disk_id, {})

    for d in cim.instances("ei", "ZEDA_DiskDrive"):
        entry = disk(d["SystemName"], d["Name"])
        entry.setdefault("drive", d)  # the first record of an identifier is its Drive
    for e in cim.instances("ei", "ZEDA_StorageExtent_Disk"):
        disk_id = e["DeviceID"].split("DiskExtent", 1)[1]
        disk(e["SystemName"], disk_id).setdefault("extent", e)
    for p in cim.instances("ei", "ZEDA_PhysicalPackage_Disk"):
        system, disk_id = p["Tag"].rsplit(":DISK", 1)
        disk(system, disk_id).setdefault("package", p)
    for s in cim.instances("ei", "ZEDA_SoftwareIdentity_Disk"):
        system, disk_id = s["InstanceID"][:-1].rsplit(":Software(DISK", 1)
        disk(system, disk_id).setdefault("software", s)
    for nas, entry in view.items():
        for number, pool_id in enumerate(POOL_IDS, 1):
            path = f'ZEDA_StoragePool_Primordial.InstanceID="ZEDA:{nas}:{pool_id}"'
            extents = cim.instances("ai", path, "--assoc-class", "ZEDA_ConcreteComponent_Primordial")
            members = {x["DeviceID"].split("DiskExtent", 1)[1] for x in extents}
            pool = {"members": members}
            # TotalManagedSpace is answered from a member extent whose own
            # pool it is (the extent-to-pool walk knows pools 1 and 2).
            for disk_id in sorted(members)[:8] if number <= 2 else []:
                extent = (f'ZEDA_StorageExtent_Disk.SystemCreationClassName="ZEDA_ComputerSystem",'
                          f'SystemName="ZEDA:{nas}",CreationClassName="ZEDA_StorageExtent_Disk",'
                          f'DeviceID="ZEDA:{nas}:DiskExtent{disk_id}"')
                found = [p for p in cim.instances("ai", extent, "--assoc-class",
                                                  "ZEDA_ConcreteComponent_Primordial")
                         if p.get("PoolID") == pool_id]
                if found:
                    pool["total"] = found[0]["TotalManagedSpace"]
                    pool["remaining"] = found[0]["RemainingManagedSpace"]
                    break
            entry["pools"][pool_id] = pool
    return view


def redfish_view(service):
    view = {}
    for member in service.get("/redfish/v1/Systems")["Members"]:
        system = service.get(member["@odata.id"])
        disks, pools = {}, {}
        for storage_link in service.get(system["Storage"]["@odata.id"])["Members"]:
            storage = service.get(storage_link["@odata.id"])
            if storage["Drives@odata.count"] != len(storage["Drives"]):
                fail(f"{system['Name']}: Drives@odata.count {storage['Drives@odata.count']} "
                     f"but {len(storage['Drives'])} links")
            for link in storage["Drives"]:
                drive = service.get(link["@odata.id"])
                if drive["@odata.id"] != link["@odata.id"]:
                    fail(f"{link['@odata.id']}: @odata.id {drive['@odata.id']}")
                disks[drive["Name"]] = drive
            for pool_link in service.get(storage["StoragePools"]["@odata.id"])["Members"]:
                pool = service.get(pool_link["@odata.id"])
                source = pool["CapacitySources"][0]
                providing = service.get(source["ProvidingDrives"]["@odata.id"])
                pool["members"] = {service_drive_name(disks, m["@odata.id"])
                                   for m in providing["Members"]}
                pools[pool["Id"]] = pool
        view[system["Name"]] = {"disks": disks, "pools": pools, "status": system["Status"]}
    return view


def service_drive_name(disks, path):
    for name, drive in disks.items():
        if drive["@odata.id"] == path:
            return name
    return "(no drive at " + path + ")"


def compare(label, cim, redfish):
    checked = 0
    # A NAS without disks has no CIM instance at all: it is only checked to be
    # empty here.
    with_disks = {nas for nas, view in redfish.items() if view["disks"]}
    if set(cim) != with_disks:
        fail(f"{label}: NAS {sorted(cim)} in CIM, {sorted(with_disks)} with drives in Redfish")
    for nas in sorted(set(cim) & set(redfish)):
        c_disks, r_disks = cim[nas]["disks"], redfish[nas]["disks"]
        if set(c_disks) != set(r_disks):
            fail(f"{label}/{nas}: disks only in CIM {sorted(set(c_disks) - set(r_disks))[:5]}, "
                 f"only in Redfish {sorted(set(r_disks) - set(c_disks))[:5]}")
        pools_of = {d: {p for p, pool in cim[nas]["pools"].items() if d in pool["members"]}
                    for d in c_disks}
        # HealthRollup: the worst Health of the NAS's drives.
        healths = {expected_status(c["drive"]["OperationalStatus"][0], c["drive"]["HealthState"])
                   [0].get("Health") for c in c_disks.values()}
        rollup = next((h for h in ("Critical", "Warning", "OK") if h in healths), None)
        if redfish[nas]["status"].get("HealthRollup") != rollup:
            fail(f"{label}/{nas}: HealthRollup {redfish[nas]['status'].get('HealthRollup')!r}, "
                 f"the drives' worst is {rollup!r}")
        for disk_id in sorted(set(c_disks) & set(r_disks)):
            c, r = c_disks[disk_id], r_disks[disk_id]
            where = f"{label}/{nas}/{disk_id}"
            drive, extent = c["drive"], c["extent"]
            status, predicted = expected_status(drive["OperationalStatus"][0], drive["HealthState"])
            expected = {
                "CapacityBytes": extent["BlockSize"] * extent["NumberOfBlocks"],
                "MediaType": MEDIA_TYPE[drive["DiskType"]],
                "RotationSpeedRPM": drive["RPM"],
                "Revision": c["software"]["VersionString"],
                "Manufacturer": c["package"]["Manufacturer"],
                "Model": c["package"]["Model"],
                "SerialNumber": c["package"]["SerialNumber"],
                "Status": status,
                "FailurePredicted": predicted,
            }
            for name, want in expected.items():
                if r.get(name) != want:
                    fail(f"{where}: {name} {r.get(name)!r}, CIM says {want!r}")
            if drive["InterconnectType"] in PROTOCOL:
                if r.get("Protocol") != PROTOCOL[drive["InterconnectType"]]:
                    fail(f"{where}: Protocol {r.get('Protocol')!r}, InterconnectType "
                         f"{drive['InterconnectType']}")
            elif r.get("Protocol") not in OTHER_PROTOCOLS:
                fail(f"{where}: Protocol {r.get('Protocol')!r} for InterconnectType 1")
            linked = {link["@odata.id"].rsplit("/", 1)[1] for link in r["Links"]["StoragePools"]}
            if linked != pools_of[disk_id]:
                fail(f"{where}: in pools {sorted(linked)}, CIM says {sorted(pools_of[disk_id])}")
            checked += 1
        for pool_id, c_pool in cim[nas]["pools"].items():
            r_pool = redfish[nas]["pools"].get(pool_id)
            where = f"{label}/{nas}/{pool_id}"
            if r_pool is None:
                fail(f"{where}: no such StoragePool")
                continue
            if r_pool["members"] != c_pool["members"]:
                fail(f"{where}: ProvidingDrives {sorted(r_pool['members'])[:5]}..., CIM "
                     f"{sorted(c_pool['members'])[:5]}...")
            if "total" in c_pool:
                data = r_pool["Capacity"]["Data"]
                if data["AllocatedBytes"] != c_pool["total"]:
                    fail(f"{where}: AllocatedBytes {data['AllocatedBytes']}, TotalManagedSpace "
                         f"{c_pool['total']}")
                if data["ConsumedBytes"] != c_pool["total"] - c_pool["remaining"]:
                    fail(f"{where}: ConsumedBytes {data['ConsumedBytes']}, CIM "
                         f"{c_pool['total'] - c_pool['remaining']}")
    return checked


def run_inventory(args, folder, label, sources, settle):
    """Both views of one configuration; a live source may still be answering
    its first SMART queries, so its views are read again until they agree."""
    port = free_port()
    config = os.path.join(folder, label + "-config.json")
    with open(config, "w") as f:
        json.dump({"programData": os.path.join(folder, label + "-pd"), "sources": sources,
                   "redfish": {"listen": f"127.0.0.1:{port}", "requestsPerSecond": 0,
                               "accounts": os.path.join(folder, "accounts")}}, f)
    service = Service(args.daemon, folder, config)
    try:
        return compare_views(args, folder, label, config, service, settle)
    except (OSError, RuntimeError, http.client.HTTPException) as error:
        fail(f"{label}: {error}")
        with open(os.path.join(folder, "daemon.log")) as log:
            print("daemon log:", log.read()[-2000:], flush=True)
        return 0
    finally:
        service.stop()


def compare_views(args, folder, label, config, service, settle):
    cim = Cim(args.zeda_cim, config, os.path.join(folder, label + "-cim"))
    for attempt in range(settle):
        before = len(FAILURES)
        checked = compare(label, cim_view(cim), redfish_view(service))
        if len(FAILURES) == before or attempt == settle - 1:
            break
        del FAILURES[before:]
        time.sleep(1)
    print(f"{label}: {checked} disks agree" if len(FAILURES) == 0 else
          f"{label}: {checked} disks compared", flush=True)
    return checked


class OneLineParser(argparse.ArgumentParser):
    """Bad arguments: one line naming the problem, exit status 2."""

    def error(self, message):
        sys.stderr.write(f"{self.prog}: {message}\n")
        sys.exit(2)


def main():
    parser = OneLineParser(description=__doc__.splitlines()[0])
    parser.add_argument("--daemon", required=True)
    parser.add_argument("--user-tool", required=True)
    parser.add_argument("--zeda-cim", required=True)
    parser.add_argument("--source", required=True, help="the source tree")
    args = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        add = subprocess.run([args.user_tool, "--accounts", os.path.join(folder, "accounts"), "add",
                              USER], input=PASSWORD + "\n", capture_output=True, text=True)
        if add.returncode != 0:
            print("zeda-redfish-user add failed:", add.stderr.strip())
            return 1
        generated = os.path.join(folder, "generated.json")
        subprocess.run([sys.executable, os.path.join(args.source, "scripts/lib/make_inventory.py"),
                        "2", "1000", generated], check=True)
        fixture = os.path.join(args.source, "tests/fixtures/linux")
        total = 0
        total += run_inventory(args, folder, "example", [
            {"type": "file", "path": os.path.join(args.source, "examples/inventory.json")}], 1)
        total += run_inventory(args, folder, "generated", [{"type": "file", "path": generated}], 1)
        total += run_inventory(args, folder, "linux", [
            {"type": "linux", "nas": "fixture", "root": fixture + "/root",
             "smartctl": fixture + "/smartctl"}], 10)
    print(f"{total} disks compared, {len(FAILURES)} differences")
    return 1 if FAILURES else 0


if __name__ == "__main__":
    sys.exit(main())
