"""check_bundle.py INFO_PLIST ENTITLEMENTS ICNS: the bundle's property lists say what macOS goes by,
and the icon is whole."""

import base64
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
    "SUEnableAutomaticChecks": True,
}
KEY_BYTES = 32
# One to three numbers with points between them, and what "About" shows as the version.
VERSIONS = {
    "CFBundleShortVersionString": r"\d+(?:\.\d+){1,2}",
    "CFBundleVersion": r"\d+(?:\.\d+){0,2}",
}


def property_list(path):
    with open(path, "rb") as file:
        return plistlib.load(file)


def breaches(info, entitlements, icon):
    for key, value in EXPECTED.items():
        if info.get(key) != value:
            yield f"{key} is {info.get(key)!r}"
    for key, pattern in VERSIONS.items():
        if not re.fullmatch(pattern, info.get(key, "")):
            yield f"{key} is {info.get(key)!r}"
    if not info.get("SUFeedURL", "").startswith("https://"):
        yield f"SUFeedURL is {info.get('SUFeedURL')!r}"
    if len(base64.b64decode(info.get("SUPublicEDKey", ""))) != KEY_BYTES:
        yield f"SUPublicEDKey is {info.get('SUPublicEDKey')!r}"
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
