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


def s_file(name, units, node_records, node_count, last_node, node_capacity, library,
           diaphragms=(), diaphragm_capacity=1):
    out = title_block(name)
    out += i16(0) + i16(units["length"]) + i16(units["force"]) + f32(units["gravity"])
    out += i16(0) + i16(1) + i16(4) + i16(1) + i16(0) + i16(0)
    out += i32(0) * 3 + i16(0) + i16(0)
    out += f64(struct.unpack("<f", f32(units["size_value"]))[0]) + text(units["size_text"], 8)
    out += i32(node_count) + i32(last_node) + i32(node_capacity)
    assert len(out) == 146
    out += b"".join(node_records)
    out += i16(len(diaphragms)) + i16(diaphragm_capacity) + b"".join(diaphragms)
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


def widened_f32(value):
    return struct.unpack("<f", f32(value))[0]


def one_node():
    """One fixed point at the origin: record 1 of the structure, then the point as record 2.
    The model has no material, so the host creates "Conc", "Steel" and "Rebar" with its
    built-in kip-inch values in the model's units (kN, m): a stress times L^2 / F, with L
    and F the single-precision inches per metre and kips per kilonewton."""
    files = empty_files("one-node")
    u = UNITS_KN_M
    length, force = widened_f32(39.37), widened_f32(0.224809)

    def stress(v):
        return v * (length * length) / force

    conc_e, conc_g, fc = stress(3604.9965), stress(1502.0819), stress(4.0)
    steel_e, steel_g = stress(29000.0), stress(11153.846)
    rebar_e, rebar_efy, rebar_efu = stress(29000.0), stress(66.0), stress(99.0)
    inelastic = [
        mat_inel(1, "MatIneFibRebar-Rebar", 0, rebar_e, rebar_efy, rebar_efu, 0.0, 0.2, u),
        mat_inel(2, "MatIneFibConc-Conc", 1, conc_e, 0.9 * fc, fc, 0.04, 0.02, u),
        mat_inel(3, "MatIneShearConc-Conc", 2, conc_g, 0.0, fc / 2, 0.0, 2.0, u),
    ]
    fibre = [mat_fiber(1, "MatElaFiberConc-Conc", conc_e, u),
             mat_fiber(2, "MatElaFiberSteel-Steel", steel_e, u)]
    shear = [mat_shear(1, "MatElaShearConc-Conc", conc_g, u),
             mat_shear(2, "MatElaShearSteel-Steel", steel_g, u)]
    slab = [mat_slab(1, "MatElaSlabConc-Conc", conc_e, 0.2, u),
            mat_slab(2, "MatElaSlabSteel-Steel", steel_e, 0.3, u)]
    library = component_library({"EndZone": [DEFAULT_END_ZONE], "MatInel": inelastic,
                                 "MatElasticFiber": fibre, "MatElasticShear": shear,
                                 "MatElasticSlab": slab}, max_count=12)
    nodes = node_records([(0.0, 0.0, 0.0, [True] * 6, 0)])
    files["TRKDS"] = s_file("one-node", u, nodes, 2, 1, 200, library)
    return files


def f32_of(value):
    """The f64 value narrowed to f32, as the structure stores it."""
    return f32(value)


def mat_inel(number, name, kind, stiffness, v1, v2, v3, v4, units):
    """TrelkMatInelRec, 329 bytes, then its strength-loss record of 50 bytes."""
    out = text(name, 40) + i16(number) + bytes([kind, units["length"], units["force"]])
    out += bytes([0, 1, 0, 1, 1, 0, 0, 0, 10, 1]) + zeros(2)   # offsets 45 to 56
    out += i16(0) + i16(number) + zeros(4) + f32_of(stiffness) + f32(0) + zeros(8)
    side_a = [v1, v2, v3, v4] if kind in (0, 2) else [0.0] * 4
    side_b = [v1, v2, v3, v4] if kind == 1 else [0.0] * 4
    out += f32_of(side_a[0]) + f32_of(side_a[1]) + f32_of(side_b[0]) + f32_of(side_b[1])
    out += f32_of(side_a[2]) + f32_of(side_a[3]) + f32_of(side_b[2]) + f32_of(side_b[3])
    out += zeros(216)
    assert len(out) == 329
    return out + bytes([1]) + zeros(49)


def mat_fiber(number, name, modulus, units):
    """TrelkMatElasticFiberRec, 126 bytes."""
    out = text(name, 40) + i16(number) + bytes([4, units["length"], units["force"], 0, 1])
    out += zeros(3) + i16(0) + i16(0) + zeros(4) + f32_of(modulus)
    out += zeros(126 - len(out))
    assert len(out) == 126
    return out


def mat_shear(number, name, modulus, units):
    """TrelkMatElasticShearRec as filled, 152 bytes, then its 56-byte sub-record."""
    out = text(name, 40) + i16(number) + bytes([5, units["length"], units["force"], 1, 0, 0, 1, 0])
    out += i16(1) + i16(number) + zeros(4) + f32_of(modulus)
    out += i16(5) + f64(0.95) + tagged_i16(0) + tagged_i16(0)
    out += f32(0) + f32(0) + zeros(8) + f32(0.8) + f32(0) * 4 + zeros(36)
    assert len(out) == 152
    return out + bytes([1]) + zeros(55)


def mat_slab(number, name, modulus, poisson, units):
    """TrelkMatElasticSlabRec, 174 bytes."""
    out = text(name, 40) + i16(number) + bytes([6, units["length"], units["force"], 0, 1])
    out += zeros(5) + i16(0) + zeros(4) + f32_of(modulus) + zeros(16) + f32_of(poisson)
    out += zeros(174 - len(out))
    assert len(out) == 174
    return out


def diaphragm_record(name):
    """TrelkDiaphragmRec, 80 bytes."""
    return text(name, 40) + zeros(40)


def floors_mats():
    """Three levels of points, diaphragms merged and dropped, materials of every kind and
    symmetry (see model.json)."""
    name = "floors-mats"
    files = empty_files(name)
    fixed = [True] * 6
    free = [False] * 6
    nodes = node_records([
        (0.0, 0.0, 0.0, fixed, 0),                                    # B1
        (6.0, 0.0, 0.0, fixed, 0),                                    # B2
        (6.0, 5.0, 0.0, [True, True, True, False, False, True], 0),   # B3
        (0.0, 5.0, 0.0, [True, True, True, False, False, False], 0),  # B4
        (0.0, 0.0, 3.0, free, 1),                                     # F1a: D1 with D2 merged
        (6.0, 0.0, 3.0, free, 1),                                     # F1b
        (6.0, 5.0, 3.0, free, 1),                                     # F1c, shared by D1, D2
        (0.1, 5.0, 3.0, free, 1),                                     # F1d
        (0.0, 0.0, 6.0, free, 0),                                     # F2a: D3 dropped
        (6.0, 0.0, 6.0, free, 0),                                     # F2b
        (3.0, 0.0, 6.0, [True] + [False] * 5, 0),                     # S2, supported in U1
        (6.0, 5.0, 6.0, [False, False, True, False, False, False], 2),  # F2c: D4
        (0.0, 5.0, 6.25, free, 2),                                    # F2d
    ])
    u = UNITS_KN_M
    # Materials as read: C30 (fc from the curve's peak compression, 32000), S355,
    # " B500 " (uniaxial: Nu 0.05, G = E / 2; eFu from the curve's peak, 560000),
    # CORTHO (orthotropic: Nu 0, G 0), SANISO (anisotropic: first values). AL6061 is left out.
    inelastic = [
        mat_inel(1, "MatIneFibRebar-B500", 0, 2e8, 550000.0, 560000.0, 0.0, 0.2, u),
        mat_inel(2, "MatIneFibConc-C30", 1, 3e7, 0.9 * 32000.0, 32000.0, 0.04, 0.02, u),
        mat_inel(3, "MatIneFibConc-CORTHO", 1, 2.5e7, 0.9 * 25000.0, 25000.0, 0.04, 0.02, u),
        mat_inel(4, "MatIneShearConc-C30", 2, 1.25e7, 0.0, 32000.0 / 2, 0.0, 2.0, u),
        mat_inel(5, "MatIneShearConc-CORTHO", 2, 0.0, 0.0, 25000.0 / 2, 0.0, 2.0, u),
    ]
    fibre = [
        mat_fiber(1, "MatElaFiberConc-C30", 3e7, u),
        mat_fiber(2, "MatElaFiberSteel-S355", 2e8, u),
        mat_fiber(3, "MatElaFiberConc-CORTHO", 2.5e7, u),
        mat_fiber(4, "MatElaFiberSteel-SANISO", 1.9e8, u),
    ]
    shear = [
        mat_shear(1, "MatElaShearConc-C30", 1.25e7, u),
        mat_shear(2, "MatElaShearSteel-S355", 76923077.0, u),
        mat_shear(3, "MatElaShearConc-CORTHO", 0.0, u),
        mat_shear(4, "MatElaShearSteel-SANISO", 7.5e7, u),
    ]
    slab = [
        mat_slab(1, "MatElaSlabConc-C30", 3e7, 0.2, u),
        mat_slab(2, "MatElaSlabSteel-S355", 2e8, 0.3, u),
        mat_slab(3, "MatElaSlabConc-CORTHO", 2.5e7, 0.0, u),
        mat_slab(4, "MatElaSlabSteel-SANISO", 1.9e8, 0.29, u),
    ]
    # MaxComponentCount: the shear and slab lists count by capacity, 12 after two records.
    library = component_library({"EndZone": [DEFAULT_END_ZONE], "MatInel": inelastic,
                                 "MatElasticFiber": fibre, "MatElasticShear": shear,
                                 "MatElasticSlab": slab}, max_count=12)
    diaphragms = [diaphragm_record("D1"), diaphragm_record("D4")]
    files["TRKDS"] = s_file(name, u, nodes, 14, 13, 200, library, diaphragms=diaphragms,
                            diaphragm_capacity=12)
    return files


def write(model, files):
    folder = os.path.join(HERE, model, "expected")
    os.makedirs(folder, exist_ok=True)
    for name, data in files.items():
        with open(os.path.join(folder, name), "wb") as f:
            f.write(data)


if __name__ == "__main__":
    write("one-node", one_node())
    write("floors-mats", floors_mats())
