#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# Writes the seed corpora of the parser harnesses into fuzz/corpus/. Run once by hand when a
# seed is to change; the files it writes are committed. The privileged-command seeds are
# entries the harness found itself, minimised with -merge=1, and are not written here.
import os
import plistlib
import struct
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))


def put(harness, name, data):
    folder = os.path.join(HERE, "corpus", harness)
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, name), "wb") as f:
        f.write(data)


def plists():
    info = {"CFBundleIdentifier": "com.acme.writer", "CFBundleName": "Writer",
            "CFBundleExecutable": "writer", "CFBundleShortVersionString": "2.1",
            "CFBundleIconFile": "AppIcon", "LSMinimumSystemVersion": "12.0"}
    everything = {"text": "caf\u00e9 \u2028 'quote' \"dq\"", "int": 42, "negative": -7,
                  "big": 2**64 - 1, "real": 3.25, "yes": True, "no": False,
                  "date": __import__("datetime").datetime(2024, 5, 1, 10, 10, 10),
                  "data": b"\x00\x01\xfe\xff", "list": [1, "two", [3.0], {"k": "v"}],
                  "empty": {}}
    nested = {"a": [[[[{"b": [[[]]]}]]]]}
    put("property_list", "info-xml.plist", plistlib.dumps(info))
    put("property_list", "info-binary.plist", plistlib.dumps(info, fmt=plistlib.FMT_BINARY))
    put("property_list", "types-xml.plist", plistlib.dumps(everything))
    put("property_list", "types-binary.plist", plistlib.dumps(everything, fmt=plistlib.FMT_BINARY))
    put("property_list", "nested-binary.plist", plistlib.dumps(nested, fmt=plistlib.FMT_BINARY))
    put("property_list", "array-top.plist", plistlib.dumps(["x", 1]))
    shared = ["same text"] * 8
    put("property_list", "shared-objects.plist", plistlib.dumps({"s": shared}, fmt=plistlib.FMT_BINARY))


def launchd_jobs():
    jobs = {
        "agent-program": {"Label": "com.acme.writer.agent",
                          "Program": "/Applications/Writer.app/Contents/MacOS/writer"},
        "daemon-arguments": {"Label": "com.example.helper",
                             "ProgramArguments": ["/Library/PrivilegedHelperTools/com.acme.writer.helper", "--run"]},
        "associated": {"Label": "com.example.updater",
                       "AssociatedBundleIdentifiers": ["com.acme.writer", "com.other.app"]},
        "other-app": {"Label": "com.acme.sheets.agent",
                      "ProgramArguments": ["/Applications/Acme Sheets.app/Contents/MacOS/sheets"]},
        "wrong-types": {"Label": 7, "Program": ["x"], "ProgramArguments": "text",
                        "AssociatedBundleIdentifiers": "com.acme.writer"},
    }
    for name, job in jobs.items():
        put("launchd_job", name + ".plist", plistlib.dumps(job))
        put("launchd_job", name + "-binary.plist", plistlib.dumps(job, fmt=plistlib.FMT_BINARY))


def png(width, height):
    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))
    ihdr = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", ihdr) + chunk(b"IEND", b"")


def icns(entries):
    body = b"".join(kind + struct.pack(">I", len(data) + 8) + data for kind, data in entries)
    return b"icns" + struct.pack(">I", len(body) + 8) + body


def icons():
    put("icns", "one-png.icns", icns([(b"ic07", png(128, 128))]))
    put("icns", "two-png.icns", icns([(b"ic07", png(128, 128)), (b"ic10", png(1024, 1024))]))
    put("icns", "argb-and-png.icns", icns([(b"ic04", b"ARGB" + bytes(12)), (b"ic08", png(256, 256))]))
    put("icns", "toc-and-png.icns", icns([(b"TOC ", b"ic07\x00\x00\x00\x30"), (b"ic07", png(128, 128))]))
    put("icns", "truncated.icns", icns([(b"ic07", png(16, 16))])[:30])


def entitlements_plist(groups):
    return plistlib.dumps({"com.apple.security.application-groups": groups,
                           "com.apple.security.app-sandbox": True})


def super_blob(entitlements):
    code_directory = struct.pack(">II", 0xFADE0C02, 16) + bytes(8)
    ent_blob = struct.pack(">II", 0xFADE7171, len(entitlements) + 8) + entitlements
    header = 12 + 2 * 8
    index = struct.pack(">II", 0, header) + struct.pack(">II", 5, header + len(code_directory))
    blobs = code_directory + ent_blob
    return struct.pack(">III", 0xFADE0CC0, header + len(blobs), 2) + index + blobs


def thin(entitlements, is64=True, little=True):
    order = "<" if little else ">"
    header_size = 32 if is64 else 28
    other = struct.pack(order + "II", 0x19, 16) + bytes(8)  # a filler load command
    commands_size = len(other) + 16
    signature_offset = header_size + commands_size
    signature = super_blob(entitlements) if entitlements is not None else b""
    code_signature = struct.pack(order + "IIII", 0x1D, 16, signature_offset, len(signature))
    commands = other + (code_signature if entitlements is not None else struct.pack(order + "II", 0x2, 16) + bytes(8))
    magic = 0xFEEDFACF if is64 else 0xFEEDFACE
    header = struct.pack(order + "IiiIIII", magic, 0x0100000C, 0, 2, 2, len(commands), 0)
    if is64:
        header += bytes(4)
    return header + commands + signature


def universal(slices, fat64=False):
    align = 64
    entry_size = 32 if fat64 else 20
    offset = 8 + entry_size * len(slices)
    offset = (offset + align - 1) // align * align
    entries, bodies, at = b"", b"", offset
    for data in slices:
        if fat64:
            entries += struct.pack(">iiQQII", 0x0100000C, 0, at, len(data), 6, 0)
        else:
            entries += struct.pack(">iiIII", 0x0100000C, 0, at, len(data), 6)
        padded = data + bytes((align - len(data) % align) % align)
        bodies += padded
        at += len(padded)
    magic = 0xCAFEBABF if fat64 else 0xCAFEBABE
    head = struct.pack(">II", magic, len(slices)) + entries
    return head + bytes(offset - len(head)) + bodies


def executables():
    ent = entitlements_plist(["group.com.acme.writer", "ABCDE12345.com.acme.shared"])
    put("macho_entitlements", "thin64.macho", thin(ent))
    put("macho_entitlements", "thin32.macho", thin(ent, is64=False))
    put("macho_entitlements", "thin64-big-endian.macho", thin(ent, little=False))
    put("macho_entitlements", "unsigned.macho", thin(None))
    put("macho_entitlements", "universal.macho", universal([thin(None), thin(ent)]))
    put("macho_entitlements", "universal64.macho", universal([thin(None), thin(ent)], fat64=True))
    binary = plistlib.dumps({"com.apple.security.application-groups": ["g.one"]}, fmt=plistlib.FMT_BINARY)
    put("macho_entitlements", "thin64-binary-plist.macho", thin(binary))


plists()
launchd_jobs()
icons()
executables()
