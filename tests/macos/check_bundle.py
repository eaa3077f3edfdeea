"""check_bundle.py INFO_PLIST ENTITLEMENTS ICNS: the bundle's property lists say what macOS goes by,
and the icon is whole."""

import plistlib
import re
import sys

EXPECTED = {
    "CFBundleExecutable": "Trovel",
    "CFBundleIconFile": "Trovel",
    "CFBundleIdentifier": "app.trovel.Trovel",
    "CFBundlePackageType": "APPL",
    "LSMinimumSystemVersion": "14.0",
    "LSUIElement": True,
    "NSPrincipalClass": "NSApplication",
    "NSSupportsAutomaticTermination": False,
}


def property_list(path):
    with open(path, "rb") as file:
        return plistlib.load(file)


def breaches(info, entitlements, icon):
    for key, value in EXPECTED.items():
        if info.get(key) != value:
            yield f"{key} is {info.get(key)!r}"
    for key in ("CFBundleShortVersionString", "CFBundleVersion"):
        if not re.fullmatch(r"\d+(?:\.\d+){1,2}", info.get(key, "")):
            yield f"{key} is {info.get(key)!r}"
    if not info.get("NSAppleEventsUsageDescription", "").endswith("."):
        yield "macOS asks the user with NSAppleEventsUsageDescription, a sentence"
    if entitlements != {"com.apple.security.automation.apple-events": True}:
        yield f"the entitlements are {entitlements}"
    if icon[:4] != b"icns" or int.from_bytes(icon[4:8], "big") != len(icon):
        yield "the icon is no whole icns file"


def main():
    info, entitlements, icns = sys.argv[1:]
    with open(icns, "rb") as file:
        icon = file.read()
    found = list(breaches(property_list(info), property_list(entitlements), icon))
    print("\n".join(found))
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
