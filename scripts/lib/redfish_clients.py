#!/usr/bin/python3
"""Real Redfish clients against a running zeda-redfishd: Debian's python3-sushy
(the library of OpenStack Ironic) and redfishtool must list every system,
storage and drive, each drive with the values the service's own JSON and
zeda-cim give for it.

usage: redfish_clients.py sushy|redfishtool --base URL --user U --password P
                          --zeda-cim PATH --inventory FILE
Prints one summary line; exit status 1 on any difference (each printed)."""
import argparse
import base64
import json
import os
import ssl
import subprocess
import sys
import urllib.request
import warnings

warnings.filterwarnings("ignore")
# A certificate bundle named in the environment would make requests verify
# the service's self-signed certificate even when a client says not to.
for name in ("REQUESTS_CA_BUNDLE", "CURL_CA_BUNDLE"):
    os.environ.pop(name, None)

FAILURES = []


def fail(what):
    FAILURES.append(what)
    print("FAIL:", what, flush=True)


def raw_get(args, path):
    ctx = ssl.create_default_context()
    ctx.check_hostname = False
    ctx.verify_mode = ssl.CERT_NONE
    auth = base64.b64encode(f"{args.user}:{args.password}".encode()).decode()
    request = urllib.request.Request(args.base + path, headers={"Authorization": "Basic " + auth})
    with urllib.request.urlopen(request, context=ctx, timeout=30) as response:
        return json.loads(response.read())


def cim_capacities(args):
    """Per NAS name, the sorted capacities zeda-cim reports."""
    out = subprocess.run([args.zeda_cim, "--inventory", args.inventory, "--program-data",
                          args.program_data, "--format", "json", "ei", "ZEDA_StorageExtent_Disk"],
                         capture_output=True, text=True, check=True).stdout
    capacities = {}
    for result in json.loads(out)["results"]:
        p = {x["name"]: x["value"] for x in result["properties"]}
        capacities.setdefault(p["SystemName"].split(":")[-1], []).append(
            p["BlockSize"] * p["NumberOfBlocks"])
    return {nas: sorted(values) for nas, values in capacities.items()}


def compare_drive(where, seen, raw):
    """`seen`: what the client made of a drive; `raw`: the service's JSON."""
    want = {"Id": raw["Id"], "Name": raw["Name"], "CapacityBytes": raw["CapacityBytes"],
            "MediaType": raw["MediaType"], "Protocol": raw.get("Protocol"),
            "Model": raw["Model"], "SerialNumber": raw["SerialNumber"],
            "Manufacturer": raw["Manufacturer"], "Health": raw["Status"].get("Health"),
            "State": raw["Status"].get("State")}
    for name, value in want.items():
        if seen.get(name) != value:
            fail(f"{where}: {name} {seen.get(name)!r}, the service says {value!r}")


def enum_value(value):
    return None if value is None else getattr(value, "value", value)


def with_sushy(args):
    import sushy
    root = sushy.Sushy(args.base + "/redfish/v1", username=args.user, password=args.password,
                       verify=False)
    found = {}
    for system in root.get_system_collection().get_members():
        capacities = []
        for storage in system.storage.get_members():
            for drive in storage.drives:
                raw = raw_get(args, drive.path)
                seen = {"Id": drive.identity, "Name": drive.name,
                        "CapacityBytes": drive.capacity_bytes,
                        "MediaType": enum_value(drive.media_type),
                        "Protocol": enum_value(drive.protocol), "Model": drive.model,
                        "SerialNumber": drive.serial_number, "Manufacturer": drive.manufacturer,
                        "Health": enum_value(drive.status.health) if drive.status else None,
                        "State": enum_value(drive.status.state) if drive.status else None}
                compare_drive(f"sushy {drive.path}", seen, raw)
                capacities.append(drive.capacity_bytes)
        found[system.name] = sorted(capacities)
    return found


def redfishtool(args, *command):
    host = args.base.split("://", 1)[1]
    out = subprocess.run(["redfishtool", "-r", host, "-u", args.user, "-p", args.password,
                          "-A", "Basic", "-S", "Always", *command],
                         capture_output=True, text=True, timeout=60)
    if out.returncode != 0:
        raise RuntimeError(f"redfishtool {' '.join(command)}: {out.stderr.strip()[-300:]}")
    return json.loads(out.stdout)


def with_redfishtool(args):
    found = {}
    systems = redfishtool(args, "Systems")
    for member in systems["Members"]:
        system = redfishtool(args, "raw", "GET", member["@odata.id"])
        capacities = []
        # redfishtool has no storage subcommand: its raw GET walks the rest.
        for link in redfishtool(args, "raw", "GET", system["Storage"]["@odata.id"])["Members"]:
            storage = redfishtool(args, "raw", "GET", link["@odata.id"])
            for drive_link in storage["Drives"]:
                drive = redfishtool(args, "raw", "GET", drive_link["@odata.id"])
                seen = dict(drive)
                seen["Health"] = drive["Status"].get("Health")
                seen["State"] = drive["Status"].get("State")
                compare_drive(f"redfishtool {drive_link['@odata.id']}", seen,
                              raw_get(args, drive_link["@odata.id"]))
                capacities.append(drive["CapacityBytes"])
        found[system["Name"]] = sorted(capacities)
    return found


class OneLineParser(argparse.ArgumentParser):
    """Bad arguments: one line naming the problem, exit status 2."""

    def error(self, message):
        sys.stderr.write(f"{self.prog}: {message}\n")
        sys.exit(2)


def main():
    parser = OneLineParser(description=__doc__.splitlines()[0])
    parser.add_argument("client", choices=["sushy", "redfishtool"])
    parser.add_argument("--base", required=True)
    parser.add_argument("--user", required=True)
    parser.add_argument("--password", required=True)
    parser.add_argument("--zeda-cim", required=True)
    parser.add_argument("--inventory", required=True)
    parser.add_argument("--program-data", required=True)
    args = parser.parse_args()
    try:
        found = with_sushy(args) if args.client == "sushy" else with_redfishtool(args)
    except Exception as error:  # the client's own failure is the finding
        fail(f"{args.client}: {type(error).__name__}: {error}")
        found = {}
    want = cim_capacities(args)
    for nas, capacities in want.items():
        if found.get(nas) != capacities:
            fail(f"{args.client}: NAS {nas}: drive capacities {found.get(nas)}, zeda-cim {capacities}")
    drives = sum(len(values) for values in found.values())
    print(f"{args.client}: {len(found)} systems, {drives} drives, "
          f"{'as zeda-cim and the service say' if not FAILURES else f'{len(FAILURES)} differences'}")
    return 1 if FAILURES else 0


if __name__ == "__main__":
    sys.exit(main())
