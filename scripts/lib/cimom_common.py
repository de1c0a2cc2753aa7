"""What the object manager test scripts share: the classes the module serves,
and bad arguments answered with one line."""
import argparse
import os
import sys

MODULE_LIBRARY = "libZEDA_DiskDriveLite.so"
NAMESPACE = "root/cimv2"
# zeda-cim's status for an operation the module exports no factory for.
NO_PROVIDER = -1

ELEMENTS = ["ZEDA_DiskDrive", "ZEDA_StorageExtent_Disk", "ZEDA_PhysicalPackage_Disk",
            "ZEDA_SoftwareIdentity_Disk"]
ASSOCIATIONS = ["ZEDA_SystemDevice_DiskDrive", "ZEDA_SystemDevice_StorageExtent_Disk",
                "ZEDA_MediaPresent", "ZEDA_Realizes_Disk", "ZEDA_ElementSoftwareIdentity_Disk",
                "ZEDA_ConcreteComponent_Primordial"]
# Association only (no instance provider): walked from the ends of the
# pool/extent association.
WALK_ONLY = {"ZEDA_AssociatedComponentExtent_Primordial": "ZEDA_ConcreteComponent_Primordial"}
ALL_CLASSES = ELEMENTS + ASSOCIATIONS + list(WALK_ONLY)


def die(message, status=1):
    """One line on standard error, named after the running script, then exit."""
    sys.stderr.write(f"{os.path.basename(sys.argv[0])}: {message}\n")
    sys.exit(status)


class OneLineParser(argparse.ArgumentParser):
    """Bad arguments: one line naming what is wrong, exit status 2."""

    def error(self, message):
        die(f"{message} (--help shows the usage)", 2)


def quote_value(value, escape_backslash=True):
    """A key value in the untyped WBEM URI form: quoted, `"` (and `\\`) escaped."""
    text = str(value)
    if escape_backslash:
        text = text.replace("\\", "\\\\")
    return '"' + text.replace('"', '\\"') + '"'


def load_pywbem(directory):
    """The pywbem package of the unpacked client archive in `directory`."""
    sys.path.insert(0, directory)
    try:
        import pywbem  # noqa: E402  (from the unpacked archive)
    except ImportError as e:
        die(f"cannot import pywbem from {directory}: {e}")
    return pywbem

