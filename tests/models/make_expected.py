#!/usr/bin/env python3
"""Builds the expected structure folders of the golden models from the published record
layouts, field by field, independently of the program. Run it when a layout decision
changes, read the diff of the expected files, and commit both.

    python3 tests/models/make_expected.py
"""
import os
import struct

HERE = os.path.dirname(os.path.abspath(__file__))


def text(value, width):
    data = value.encode("cp1252")[:width]
    return data + b" " * (width - len(data))


def i16(v): return struct.pack("<h", v)
def i32(v): return struct.pack("<i", v)
def f32(v): return struct.pack("<f", v)
def f64(v): return struct.pack("<d", v)
def zeros(n): return b"\0" * n
def tagged_i16(v): return i16(2) + i16(v)


VERSION = text("4.0", 8)
TITLE = "Model Transferred"

# Host unit code 6: kilonewton (3), metre (4), g 9.81; display size column 1.
UNITS_KN_M = {"length": 4, "force": 3, "gravity": 9.81, "size_value": 0.15, "size_text": "0.15 m."}

DEFAULT_END_ZONE = (text("Default End Zone", 40) + i16(1) + bytes([3]) + zeros(5) + zeros(13)
                    + f32(10) + f32(10) + f32(0) + f32(0) + f32(0.5) * 4 + zeros(16))
assert len(DEFAULT_END_ZONE) == 109

# Lists of the component library in file order, and the i16 zero words after some of them.
LIBRARY = ["Inel01", "Inel02", "Inel03", "Inel04", "Inel05", "Inel06", "FemaBeam", "Inel07",
           "Inel08", "Inel09", "Inel10", "FemaColumn", "Inel11", "Inel12", ("Inel13", 18),
           "Elastic01", "Elastic02", "EndZone", "Release", "Elastic03", "Elastic04",
           ("Elastic05", 9), "MatInel", "MatOther01", "MatElasticFiber", "MatElasticShear",
           "MatElasticSlab", ("MatOther02", 8), "XecOther01", "XecBeam", "XecColumn", "XecSlab",
           "XecOther02", "XecWallInel", "XecWallElastic", "XecOther03", ("XecOther04", 13),
           "CompElement01", "CompElement02", "CompElement03", ("CompElement04", 10),
           "CpdFrame", "CpdWall", "CpdGWall", "Compound01", ("Compound02", 9)]


def support_kind(r):
    if all(r):
        return 1
    if r[0] and r[1] and r[2] and not (r[3] or r[4] or r[5]):
        return 2
    if r[0] and r[1] and r[2] and r[5] and not (r[3] or r[4]):
        return 3
    return 9 if any(r) else 0


def node_record(number, prev, nxt, x, y, z, restrained, slaved=0):
    """TrelkNodeRec, 84 bytes."""
    out = i32(prev) + i32(nxt) + f64(x) + f64(y) + f64(z)
    out += i16(0) + i16(slaved) + i16(slaved) + i16(0) + i16(0) + i16(0) + i16(slaved)
    out += zeros(13) + bytes([support_kind(restrained)]) + zeros(1)
    out += bytes(1 if r else 0 for r in restrained) + zeros(6)
    out += bytes([1 if number == 1 else 0] * 6) + bytes([1]) + zeros(4)
    assert len(out) == 84
    return out


def node_records(points):
    """The artificial record 1 at the origin, then one record for each point (x, y, z,
    restraints, slaved group)."""
    recs = [node_record(1, 0, 2, 0.0, 0.0, 0.0, [False] * 6)]
    for i, (x, y, z, restrained, slaved) in enumerate(points, start=1):
        n = i + 1
        recs.append(node_record(n, n - 1, 0 if i == len(points) else n + 1, x, y, z,
                                restrained, slaved))
    return recs


def component_library(records, max_count=1):
    """records: list name -> list of record bytes (sub-records included)."""
    out = i16(max_count)
    for entry in LIBRARY:
        name, gap = (entry, 0) if isinstance(entry, str) else entry
        recs = records.get(name, [])
        out += i16(len(recs)) + b"".join(recs) + zeros(2 * gap)
    return out


def title_block(name):
    return VERSION + text(name, 12) + text(TITLE, 60)


def s_file(name, units, node_records, node_count, last_node, node_capacity, library):
    out = title_block(name)
    out += i16(0) + i16(units["length"]) + i16(units["force"]) + f32(units["gravity"])
    out += i16(0) + i16(1) + i16(4) + i16(1) + i16(0) + i16(0)
    out += i32(0) * 3 + i16(0) + i16(0)
    out += f64(struct.unpack("<f", f32(units["size_value"]))[0]) + text(units["size_text"], 8)
    out += i32(node_count) + i32(last_node) + i32(node_capacity)
    assert len(out) == 146
    out += b"".join(node_records)
    out += i16(0) + i16(1)                          # diaphragms
    out += tagged_i16(0) + tagged_i16(1)            # nodal mass patterns
    out += i16(0) + i16(0) + i16(1)                 # element groups: count, last, capacity
    out += i32(0) + i32(0) + i32(1)                 # elements
    out += i16(0) + i16(0)                          # structure frames
    out += i16(0) + i16(1)                          # nodal load patterns
    out += i16(0) + i16(1) + i16(1) + i16(0) + i16(1)  # frame load patterns, slots, values
    out += i16(0) + i16(1)                          # self weight patterns
    out += zeros(12)                                # six zero words
    out += i16(0) + i16(0) + i16(1)                 # section cuts
    out += i32(0) + i32(1)                          # cut members
    out += i16(0) + i16(1)                          # cut groups
    out += i16(0) + i16(1) + i16(0) + i16(1)        # drifts, deflections
    out += i16(0) * 10 + i16(1) * 10                # limit states
    out += library
    out += i16(0) * 3 + i32(0) * 2                  # tail
    return out


def empty_files(name):
    return {
        "TRKDA": title_block(name) + i16(0) * 3 + i16(0) + i16(0),
        "TRKDULS": VERSION + i16(0) + i16(0),
        "TRKDPO": VERSION + zeros(282),
        "TRKDPOA": VERSION + i16(0),
        "TRKDPOF": VERSION + zeros(20),
        "TRKDL": title_block(name) + i16(0) * 20 + i16(0) * 20,
    }


def one_node():
    # One fixed point at the origin: record 1 of the structure, then the point as record 2.
    files = empty_files("one-node")
    library = component_library({"EndZone": [DEFAULT_END_ZONE]})
    assert len(library) == 337
    nodes = node_records([(0.0, 0.0, 0.0, [True] * 6, 0)])
    files["TRKDS"] = s_file("one-node", UNITS_KN_M, nodes, 2, 1, 200, library)
    return files


def write(model, files):
    folder = os.path.join(HERE, model, "expected")
    os.makedirs(folder, exist_ok=True)
    for name, data in files.items():
        with open(os.path.join(folder, name), "wb") as f:
            f.write(data)


if __name__ == "__main__":
    write("one-node", one_node())
