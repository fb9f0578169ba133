#!/usr/bin/env python3
"""Builds the expected structure folders of the golden models from the published record
layouts, field by field, independently of the program. Run it when a layout decision
changes, read the diff of the expected files, and commit both.

    python3 tests/models/make_expected.py
"""
import math
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
           diaphragms=(), diaphragm_capacity=1, groups=(), group_capacity=1, elements=(),
           element_capacity=1, mass_rows=None, frame_sets=(), node_patterns=None,
           frame_loads=(), self_weight=(), cuts=((), ()), drift=None):
    """The structure file. The last-added copies of the group and element counts equal the
    counts. What the load, mass and measuring steps made:
      mass_rows     six values of "Nodal Mass" for each node record (all 0 when None);
      frame_sets    structure frames: (name, node numbers, element numbers);
      node_patterns nodal load patterns: (name, code, {node number: six values}); when None,
                    the two acceleration patterns of the mass rows alone;
      frame_loads   frame load patterns: (name, {group: [subgroup, ...]}), see
                    load_frame_section;
      self_weight   self-weight patterns: (name, element numbers that take their weight);
      cuts          (frames, areas) cut at the base, each a list of (end, element);
      drift         (top node, bottom node) of the drift pair, or None."""
    if mass_rows is None:
        mass_rows = [[0.0] * 6 for _ in range(node_count)]
    if node_patterns is None:
        node_patterns = accel_patterns(mass_rows)
    out = title_block(name)
    out += i16(0) + i16(units["length"]) + i16(units["force"]) + f32(units["gravity"])
    out += i16(0) + i16(1) + i16(4) + i16(1) + i16(0) + i16(0)
    out += i32(0) * 3 + i16(0) + i16(0)
    out += f64(struct.unpack("<f", f32(units["size_value"]))[0]) + text(units["size_text"], 8)
    out += i32(node_count) + i32(last_node) + i32(node_capacity)
    assert len(out) == 146
    out += b"".join(node_records)
    out += i16(len(diaphragms)) + i16(diaphragm_capacity) + b"".join(diaphragms)
    out += nodal_mass_section(mass_rows)
    out += i16(len(groups)) + i16(len(groups)) + i16(group_capacity) + b"".join(groups)
    out += i32(len(elements)) + i32(len(elements)) + i32(element_capacity) + b"".join(elements)
    out += structure_frames_section(frame_sets, node_capacity, element_capacity)
    out += load_node_section(node_patterns, node_count)
    out += load_frame_section(frame_loads, len(groups), len(elements))
    out += self_weight_section(self_weight, len(elements))
    out += zeros(12)                                # six zero words
    out += section_cut_sections(*cuts)
    out += drift_section(drift)
    out += i16(0) * 10 + i16(1) * 10                # limit states
    out += library
    out += i16(0) * 3 + i32(0) * 2                  # tail
    return out


# --- Sections of the structure file written by the load, mass and measuring steps --------

def nodal_mass_section(rows):
    """The one mass pattern "Nodal Mass" (tagged count and capacity, 1 and 1), then six f32
    for each node record from 1 to the node count."""
    out = tagged_i16(1) + tagged_i16(1) + placed(64, (0, text("Nodal Mass", 40)))
    return out + b"".join(f32s(row) for row in rows)


def structure_frames_section(frame_sets, node_capacity, elem_capacity):
    """Frames (named sets of nodes and elements): the records, then both flag matrices with
    every allocated slot, frames up to the capacity (the first frame gives 11); nodes from 1
    to the node capacity, elements from 0 to the element capacity."""
    if not frame_sets:
        return i16(0) + i16(0)
    capacity = grown_capacity(len(frame_sets), capacity=0)
    out = i16(len(frame_sets)) + i16(capacity)
    for t, (name, _, _) in enumerate(frame_sets, start=1):
        out += placed(28, (0, text(name_with_suffix("", name, t), 20)))
    sets = list(frame_sets) + [("", (), ())] * (capacity - len(frame_sets))
    for _, node_ids, _ in sets:
        out += bytes(1 if n in node_ids else 0 for n in range(1, node_capacity + 1))
    for _, _, elem_ids in sets:
        out += bytes(1 if e in elem_ids else 0 for e in range(0, elem_capacity + 1))
    return out


def pattern_record(name, code):
    """TrelkLoadNodePatternRec, TrelkLoadFramePatternRec and TrelkSelfWeightPatternRec share
    one form of 72 bytes."""
    return placed(72, (0, text(name, 40)), (42, i16(code)))


def accel_patterns(mass_rows):
    """"AccelUX" and "AccelUY": the U1 mass of each source node above 1e-6, as F1 and as F2
    (the Y pattern takes the U1 mass too). Record 1 is no source node."""
    ux, uy = {}, {}
    for n, row in enumerate(mass_rows, start=1):
        if n > 1 and row[0] > 1e-6:
            ux[n] = [row[0], 0.0, 0.0, 0.0, 0.0, 0.0]
            uy[n] = [0.0, row[0], 0.0, 0.0, 0.0, 0.0]
    return [("AccelUX", 1, ux), ("AccelUY", 2, uy)]


def load_node_section(patterns, node_count):
    """Nodal load patterns (capacity count + 10), then for each pattern and node record one
    value record of 32 bytes: F1, F2, F3, M1, M2, M3, Used 1.0 where the node is loaded."""
    out = i16(len(patterns)) + i16(len(patterns) + 10)
    out += b"".join(pattern_record(name, code) for name, code, _ in patterns)
    for _, _, loads in patterns:
        for n in range(1, node_count + 1):
            out += f32s(list(loads[n]) + [1.0]) + zeros(4) if n in loads else zeros(32)
    return out


def frame_load_item(kind, next_item, value1, position1, value2, position2):
    """TrelkLoadFrameValueRec, 30 bytes: kind 1 distributed, 2 point."""
    return placed(30, (0, bytes([kind])), (2, i16(next_item)),
                  (6, f32s([value1, position1, value2, position2])))


def load_frame_section(patterns, group_count, elem_count):
    """Frame load patterns. patterns: (name, {group: [subgroup, ...]}) with the subgroups of
    each element group in their number order; a subgroup is a dict with "elems" (element
    numbers), "dist" ((RD1, RD2, Val1, Val2) items) and "point" ((RD, Val) items). The
    value matrix is dumped by its slot bound, the largest subgroup number plus 1."""
    if not patterns:
        return i16(0) + i16(1) + i16(1) + i16(0) + i16(1)
    slots = max([len(subs) for _, groups in patterns for subs in groups.values()] + [0]) + 1
    group_index, group_value, elem_index, items = {}, {}, {}, []
    for q, (_, groups) in enumerate(patterns, start=1):
        for g in range(1, group_count + 1):
            subs = groups.get(g, [])
            for s, sub in enumerate(subs, start=1):
                for e in sub["elems"]:
                    elem_index[(q, e)] = s
            group_index[(q, g)] = len(subs)
            for s, sub in enumerate(subs, start=1):
                entries = ([(1, item) for item in sub["dist"]]
                           + [(2, (rd, 0.0, val, 0.0)) for rd, val in sub["point"]])
                for u, (kind, (rd1, rd2, val1, val2)) in enumerate(entries, start=1):
                    t = len(items) + 1
                    if u == 1:
                        count = len(sub["elems"]) if kind == 1 else 1
                        group_value[(s, q, g)] = placed(16, (0, i32(count)),
                                                        (8, i16(len(entries))), (10, i16(t)))
                    next_item = 0 if u == len(entries) else t + 1
                    if kind == 1:
                        items.append(frame_load_item(1, next_item, val1, rd1, val2, rd2))
                    else:
                        items.append(frame_load_item(2, next_item, val1, rd1, 0.0, 0.0))
    out = i16(len(patterns)) + i16(len(patterns) + 10) + i16(slots)
    out += i16(len(items)) + i16(grown_capacity(len(items)))
    out += b"".join(pattern_record(name, 1) for name, _ in patterns)
    for q in range(1, len(patterns) + 1):
        out += b"".join(i16(group_index[(q, g)]) for g in range(1, group_count + 1))
    for s in range(1, slots + 1):
        for q in range(1, len(patterns) + 1):
            for g in range(1, group_count + 1):
                out += group_value.get((s, q, g), zeros(16))
    for q in range(1, len(patterns) + 1):
        out += b"".join(i16(elem_index.get((q, e), 0)) for e in range(1, elem_count + 1))
    return out + b"".join(items)


def self_weight_section(patterns, elem_count):
    """Self-weight patterns (capacity count + 10), then one flag byte for each pattern and
    element. patterns: (name, element numbers that take their weight)."""
    if not patterns:
        return i16(0) + i16(1)
    out = i16(len(patterns)) + i16(len(patterns) + 10)
    out += b"".join(pattern_record(name, -3) for name, _ in patterns)
    for _, flagged in patterns:
        out += bytes(1 if e in flagged else 0 for e in range(1, elem_count + 1))
    return out


def cut_member(end, elem, next_entry):
    """TrelkCutMemberRec, 10 bytes."""
    return i16(end) + i32(elem) + i32(next_entry)


def section_cut_sections(frame_cut, area_cut):
    """The base cuts, their member list and the one cut group. frame_cut and area_cut: the
    qualifying frames and areas in model order, each (end, element). The member list holds
    nf + 1 + na + 1 entries even when one side is empty, so an unused entry of zeros closes it."""
    nf, na = len(frame_cut), len(area_cut)
    if nf + na == 0:
        return i16(0) + i16(0) + i16(1) + i32(0) + i32(1) + i16(0) + i16(1)
    cuts = []
    members = [zeros(10)] * (nf + 1 + na + 1)

    def cut_record(name, first, last):
        return placed(78, (0, text(name, 40)), (40, i32(first)), (44, i32(last)),
                      (54, f32s([1.0, 2.0, 3.0])))

    if nf:
        cuts.append(cut_record("Frame Base Cut", 1, nf + 1))
        members[0] = cut_member(0, 0, 2)
        for j, (end, elem) in enumerate(frame_cut, start=1):
            members[j] = cut_member(end, elem, 0 if j == nf else j + 2)
    if na:
        f = 1 if nf == 0 else nf + 2
        cuts.append(cut_record("Area Base Cut", f, f + na))
        members[f - 1] = cut_member(0, 0, f + 1)
        for j, (end, elem) in enumerate(area_cut, start=1):
            members[f + j - 1] = cut_member(end, elem, 0 if j == na else f + j + 1)
    out = i16(len(cuts)) + i16(0) + i16(len(cuts) + 10) + b"".join(cuts) + zeros(34) * len(cuts)
    out += i32(len(members)) + i32(len(members) + 10) + b"".join(members)
    group = placed(56, (0, text("Support Sect Group", 40)), (40, i16(1)), (42, i16(len(cuts))))
    return out + i16(1) + i16(1) + group + bytes([1] * len(cuts))


def drift_section(pair):
    """"H1 Drift" and "H2 Drift" on the drift pair (capacity 12 after the second), then the
    deflections, always none."""
    if pair is None:
        return i16(0) + i16(1) + i16(0) + i16(1)
    top, bottom = pair
    records = [placed(46, (0, text(name, 20)), (20, bytes([1, axis])), (22, i32(top)),
                      (26, i32(bottom)))
               for axis, name in enumerate(["H1 Drift", "H2 Drift"])]
    return i16(2) + i16(grown_capacity(2)) + i16(0) + i16(1) + b"".join(records)


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

    def stress(v):
        return built_in_stress(v, u)

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
    library = component_library({"EndZone": [DEFAULT_END_ZONE], "Release": [EMBED_BEAM_RELEASE],
                                 "MatInel": inelastic,
                                 "MatElasticFiber": fibre, "MatElasticShear": shear,
                                 "MatElasticSlab": slab}, max_count=12)
    nodes = node_records([(0.0, 0.0, 0.0, [True] * 6, 0)])
    # One node is the last node too, so there is no drift pair; it is fixed, so no mass.
    source = plain_source(source_nodes([("1", 0.0, 0.0, 0.0, [True] * 6)]))
    assert drift_pair(source["nodes"]) is None
    files["TRKDS"] = s_file("one-node", u, nodes, 2, 1, 200, library, **measured(source, 2))
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
    points = [
        ("B1", 0.0, 0.0, 0.0, fixed, 0),
        ("B2", 6.0, 0.0, 0.0, fixed, 0),
        ("B3", 6.0, 5.0, 0.0, [True, True, True, False, False, True], 0),
        ("B4", 0.0, 5.0, 0.0, [True, True, True, False, False, False], 0),
        ("F1a", 0.0, 0.0, 3.0, free, 1),                                  # D1 with D2 merged
        ("F1b", 6.0, 0.0, 3.0, free, 1),
        ("F1c", 6.0, 5.0, 3.0, free, 1),                                  # shared by D1, D2
        ("F1d", 0.1, 5.0, 3.0, free, 1),
        ("F2a", 0.0, 0.0, 6.0, free, 0),                                  # D3 dropped
        ("F2b", 6.0, 0.0, 6.0, free, 0),
        ("S2", 3.0, 0.0, 6.0, [True] + [False] * 5, 0),                   # supported in U1
        ("F2c", 6.0, 5.0, 6.0, [False, False, True, False, False, False], 2),  # D4
        ("F2d", 0.0, 5.0, 6.25, free, 2),
    ]
    nodes = node_records([p[1:] for p in points])
    # No frame and no area: no mass, no cut. The highest node, F2d, is the last one, so
    # there is no drift pair.
    source = plain_source(source_nodes([p[:5] for p in points]))
    assert drift_pair(source["nodes"]) is None
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
    library = component_library({"EndZone": [DEFAULT_END_ZONE], "Release": [EMBED_BEAM_RELEASE],
                                 "MatInel": inelastic,
                                 "MatElasticFiber": fibre, "MatElasticShear": shear,
                                 "MatElasticSlab": slab}, max_count=12)
    diaphragms = [diaphragm_record("D1"), diaphragm_record("D4")]
    files["TRKDS"] = s_file(name, u, nodes, 14, 13, 200, library, diaphragms=diaphragms,
                            diaphragm_capacity=12, **measured(source, 14))
    return files


# Host unit code 3: kip (0), inch (0), g 386.4; display size column 1.
UNITS_KIP_IN = {"length": 0, "force": 0, "gravity": 386.4, "size_value": 6.0, "size_text": "6 in."}

# Inches per length unit and kips per force unit, the single-precision tables widened.
INCHES_PER_UNIT = [1.0, 12.0, 0.03937, 0.3937, 39.37]
KIPS_PER_UNIT = [1.0, 0.001, 0.000224809, 0.224809, 0.0022046, 2.2046]


def placed(size, *fields):
    """A record of `size` zero bytes with each (offset, bytes) field put in its place."""
    out = bytearray(size)
    taken = bytearray(size)
    for offset, data in fields:
        assert offset + len(data) <= size and not any(taken[offset:offset + len(data)])
        out[offset:offset + len(data)] = data
        taken[offset:offset + len(data)] = b"\1" * len(data)
    return bytes(out)


def f32s(values):
    return b"".join(f32(v) for v in values)


def name_with_suffix(prefix, label, number):
    name = prefix + label.strip(" ")
    return name if len(name) <= 40 else prefix + str(number + 1)


def section_constants(section):
    """Area, torsion constant, I22, I33, As2, As3: the order of the cross-section records."""
    return [section[k] for k in ("area", "J", "I22", "I33", "As2", "As3")]


def xec_head(name, number, units, kind, shape):
    """The name, number, the two empty texts at 42 and 62, and the six bytes at 86."""
    return [(0, text(name, 40)), (40, i16(number)), (42, text("", 20)), (62, text("", 24)),
            (86, bytes([0, units["length"], units["force"], kind, shape, 0]))]


def xec_beam(number, name, kind, shape, section, material, units, depths=(0.0, 0.0)):
    """TrelkXecBeamRec, 424 bytes. Only embedded-beam sections carry depths (t2, t3); the
    flange and web thicknesses are never read."""
    return placed(424, *xec_head(name, number, units, kind, shape),
                  (104, f32s(section_constants(section))), (128, f32s([1.0, 1.0])),
                  (144, f32s([material["E"], material["Nu"], material["G"]])),
                  (156, f32s(list(depths) + [0.0, 0.0])), (400, i16(number)))


def xec_column(number, name, kind, shape, section, material, units):
    """TrelkXecColumnRec, 687 bytes."""
    return placed(687, *xec_head(name, number, units, kind, shape),
                  (103, f32s(section_constants(section))), (127, f32s([1.0, 1.0])),
                  (151, f32s([material["E"], material["Nu"], material["G"]])),
                  (163, f32s([0.0] * 4)), (663, i16(number)))


# Target directions of a release component in record order, and the source flag of each
# (U1, U2, U3, R1, R2, R3 numbered from 0); M2 is never carried.
RELEASE_DIRECTIONS = [("A", 0), ("V2", 1), ("V3", 2), ("M2", None), ("M3", 5), ("T", 3)]


def release_flags(source_flags):
    return [1 if src is not None and source_flags[src] else 0 for _, src in RELEASE_DIRECTIONS]


def release_name(flags):
    return "Release-" + "".join(tag for (tag, _), f in zip(RELEASE_DIRECTIONS, flags) if f)


def release_record(number, name, flags):
    """TrelkReleaseRec, 89 bytes: flags in the order A, V2, V3, M2, M3, T."""
    return placed(89, (0, text(name, 40)), (40, i16(number)), (42, bytes([4])), (45, bytes(flags)),
                  (53, i16(number)), (57, f32s([1e-05 if f else 0.0 for f in flags])))


def unit_factors(units):
    """L and F: inches per length unit and kips per force unit, single precision widened."""
    return (widened_f32(INCHES_PER_UNIT[units["length"]]),
            widened_f32(KIPS_PER_UNIT[units["force"]]))


def built_in_stress(value, units):
    """A stress of the host's built-in materials (kip and inch) in the model's units."""
    length, force = unit_factors(units)
    return value * (length * length) / force


# Release component 1 of every structure: only M3 released.
EMBED_BEAM_RELEASE = release_record(1, "EmbedBeamRelease", [0, 0, 0, 0, 1, 0])


def stress_unit(units):
    """S: one stress unit of the model in kips per square inch; and L."""
    length, force = unit_factors(units)
    return force / length / length, length


def fema_head(name, number, kind, sub_kind, xsect, units, option2, strength_loss):
    return [(0, text(name, 40)), (40, i16(number)), (42, bytes([kind, units["length"], units["force"]])),
            (48, bytes([1, option2])), (54, bytes([strength_loss])), (57, i16(3)), (59, i16(sub_kind)),
            (61, i16(xsect)), (63, i16(number))]


def fema_elastic(section, material):
    """E, Nu, G, Area, As2, As3, J, I22, I33 at offset 93."""
    return (93, f32s([material["E"], material["Nu"], material["G"]]
                     + [section[k] for k in ("area", "As2", "As3", "J", "I22", "I33")]))


def fema_beam(number, name, concrete, xsect, section, material, units):
    """TrelkIneFemaBeamRec, 425 bytes; its strength-loss record is not written."""
    s, length = stress_unit(units)
    area = section["area"]
    if concrete:
        reference, moment = 196.85 / length, area * 100 * 0.004 / s * math.sqrt(area)
        deformations = [0.1, 0.04, 0.08]
    else:
        reference, moment = 0.0, 100 / s * math.sqrt(area)
        deformations = [20.0, 11.0, 13.0]
    return placed(425, *fema_head(name, number, 2 if concrete else 1, 3 if concrete else 4, xsect,
                                  units, 0, 0),
                  (53, bytes([10])), fema_elastic(section, material),
                  (137, f32s([1.0, reference, 0.0, moment])), (161, f32(0.0)),
                  (165, f32(deformations[0])), (185, f32s(deformations[1:])), (217, f32(0.4)),
                  (241, f32s([2.0, 7.0, 9.0])))


def fema_column(number, name, concrete, xsect, section, material, units):
    """TrelkIneFemaColumnRec, 473 bytes, then its 60-byte sub-record."""
    s, length = stress_unit(units)
    area = section["area"]
    if concrete:
        axial1 = widened_f32(area * 100 * 0.008 / s)
        axial2 = area * material["ConcFc"] + axial1
        moment = axial1 * math.sqrt(area) / 2 * 3 / 4
        reference, deformations = 196.85 / length, [0.003, 0.005, 0.017, 0.02]
    else:
        axial1 = axial2 = area * material["Fu"]
        moment = area * material["Fu"] * math.sqrt(area) / 2
        reference, deformations = 0.0, [20.0] * 4
    out = placed(473, *fema_head(name, number, 15 if concrete else 14, 6 if concrete else 7, xsect,
                                 units, 1, 1),
                 fema_elastic(section, material),
                 (133, f32s([1.0, reference, axial1, axial2, moment, moment])),
                 (173, f32s(deformations)),
                 (197, f32s([0.15, 0.8, 0.8, 1.1, 2.0, 2.0, 2.0, 2.0, 1.4])), (305, f32(9.0)))
    return out + bytes([1]) + zeros(59)


def member_part(source, shape, kind, component, length):
    return {"source": source, "shape": shape, "flag": 1, "kind": kind, "component": component,
            "length": length}


def release_part(component):
    return {"source": 2, "shape": 4, "flag": 12, "kind": 4, "component": component, "length": 0.0}


def cpd_frame(number, name, parts, weight, units):
    """TrelkCpdFrameRec, 378 bytes, then its all-zero sub-record of 45 bytes."""
    def column(key, pack, width):
        return b"".join(pack(p[key]) for p in parts) + zeros(width * (13 - len(parts)))
    lengths = column("length", f32, 4)
    out = placed(378, (0, text(name, 40)), (40, i16(number)),
                 (42, bytes([2, units["force"], units["length"], len(parts)])), (47, bytes([1, 1])),
                 (66, column("source", lambda v: bytes([v]), 1)),
                 (79, column("shape", lambda v: bytes([v]), 1)),
                 (92, column("flag", lambda v: bytes([v]), 1)),
                 (118, column("kind", i16, 2)), (144, column("component", i16, 2)),
                 (170, lengths), (222, lengths), (354, i16(number)), (362, f32(weight)))
    return out + zeros(45)


def elem_group(name, kind, first, last):
    """TrelkElemGroupRec, 76 bytes."""
    return placed(76, (0, text(name, 40)), (40, i16(kind)), (44, i32(first)), (48, i32(last)),
                  (60, f32(1.0)))


def elem_record(group, node1, node2, next_elem, component=0, option=0, angle=0.0):
    """TrelkElemRec, 92 bytes; group 0 makes a group's leading record."""
    source, kind = (6, 2) if group else (0, 0)
    return placed(92, (0, i16(group)), (6, i32(node1)), (10, i32(node2)), (22, i32(next_elem)),
                  (26, bytes([6])), (28, bytes([source, kind, option, option])),
                  (42, i16(component)), (64, f32s([angle, angle])))


def grown_capacity(count, capacity=1, step=10):
    """The capacity after `count` additions by the common rule: count plus the step when passed."""
    for n in range(1, count + 1):
        if n > capacity:
            capacity = n + step
    return capacity


def section_components(steel_sections, conc_sections, steel, conc, units):
    """Beam and column cross sections, FEMA beams and columns of the sections, each list
    with the steel sections first (numbers 1, 2, ...) and the concrete ones after them.
    A section is (place in the section list, label, constants, shape)."""
    beams, columns, fema_beams, fema_columns = [], [], [], []
    kinds = [(steel_sections, steel, "S", False, 4, 7), (conc_sections, conc, "C", True, 3, 6)]
    n = 1
    for sections, mat, tag, concrete, beam_kind, column_kind in kinds:
        for i, label, sect, shape in sections:
            beams.append(xec_beam(n, name_with_suffix("XecBm%s-" % tag, label, i), beam_kind,
                                  shape, sect, mat, units))
            columns.append(xec_column(n, name_with_suffix("XecCol%s-" % tag, label, i), column_kind,
                                      shape, sect, mat, units))
            fema_beams.append(fema_beam(n, name_with_suffix("IneFemaBm%s-" % tag, label, i),
                                        concrete, n, sect, mat, units))
            fema_columns.append(fema_column(n, name_with_suffix("IneFemaCol%s-" % tag, label, i),
                                            concrete, n, sect, mat, units))
            n += 1
    return beams, columns, fema_beams, fema_columns


# The eight passes of plain frame compounds: prefix, part source, part kind, part shape,
# two parts; the first four over the steel sections, the others over the concrete ones.
PLAIN_COMPOUND_PASSES = [("CpdBmS-", 3, 4, 2, False), ("CpdFemaBmS-", 1, 1, 3, True),
                         ("CpdColS-", 3, 7, 3, False), ("CpdFemaColS-", 1, 14, 7, True),
                         ("CpdBmC-", 3, 3, 2, False), ("CpdFemaBmC-", 1, 2, 3, True),
                         ("CpdColC-", 3, 6, 3, False), ("CpdFemaColC-", 1, 15, 7, True)]


def plain_compounds(steel_sections, conc_sections, steel, conc, units):
    """Compounds 1 to 8 x the section count; each part refers to the cross section or FEMA
    record of the section's own number (as section_components numbers them)."""
    compounds = []
    for p, (prefix, source, kind, shape, two) in enumerate(PLAIN_COMPOUND_PASSES):
        sections, first, mat = ((steel_sections, 1, steel) if p < 4
                                else (conc_sections, len(steel_sections) + 1, conc))
        for n, (i, label, sect, _) in enumerate(sections, start=first):
            parts = ([member_part(source, shape, kind, n, 0.5)] * 2 if two
                     else [member_part(source, shape, kind, n, 1.0)])
            compounds.append(cpd_frame(len(compounds) + 1, name_with_suffix(prefix, label, i), parts,
                                       sect["area"] * mat["UnitWeight"], units))
    return compounds


def xec_wall_elastic(number, name, kind, thick, bend, material, material_id, units):
    """TrelkXecWallElasticRec, 439 bytes; the texts at 42 and 62 are never assigned."""
    return placed(439, (0, text(name, 40)), (40, i16(number)),
                  (86, bytes([kind, units["length"], units["force"], 1, 0])),
                  (103, f32(thick)), (119, f32(bend)), (123, f32(material["E"])), (127, f32(bend)),
                  (131, f32(material["Nu"])), (187, i16(4)), (219, i16(material_id)))


def f32_add(a, b):
    """The sum of two f32 values in f32."""
    return widened_f32(widened_f32(a) + widened_f32(b))


def wall_fibre_row(count, area):
    """Areas (stored negative) and positions of `count` fibres spread evenly over the wall
    length, from -0.5 to 0.5: the start and the step narrowed to f32, each next position
    the previous one plus the step in f32."""
    position, step = widened_f32(0.5 / count - 0.5), widened_f32(1.0 / count)
    positions = []
    for _ in range(count):
        positions.append(position)
        position = f32_add(position, step)
    return [-widened_f32(area)] * count, positions


def xec_wall_inel(number, name, kind, thick, bend, percent, material, concrete_id, rebar_id,
                  units):
    """TrelkXecWallInelRec, 455 bytes: six concrete fibres and two rebar fibres; its
    sub-record is never written."""
    percent32 = widened_f32(percent)
    conc_areas, conc_positions = wall_fibre_row(6, thick / 6)
    rebar_areas, rebar_positions = wall_fibre_row(2, (percent32 * thick) / (2 * 100))
    blank = [0] * 8
    return placed(455, (0, text(name, 40)), (40, i16(number)), (42, text("", 20)),
                  (62, text("", 24)),
                  (86, bytes([kind, units["length"], units["force"], 1, 8, 0, 0])),
                  (95, i16(2) + i16(6) + i16(0) + i16(0) + i16(number)),
                  (111, f32s([percent32, 0.3, 0.0, thick, 0.0, 0.0])),
                  (155, f32s([bend, material["E"], bend, material["Nu"]])),
                  (171, bytes([4] * 8 + blank)), (187, bytes([1] * 8 + blank)),
                  (203, b"".join(i16(v) for v in [1] * 6 + [0] * 2 + blank)),
                  (235, b"".join(i16(v) for v in [concrete_id] * 6 + [rebar_id] * 2 + blank)),
                  (267, f32s(conc_areas + rebar_areas + blank)),
                  (331, f32s(conc_positions + rebar_positions + blank)))


def xec_slab(number, name, thick, bend, material, material_id, units):
    """TrelkXecSlabRec, 274 bytes; the texts at 42 and 62 are never assigned."""
    return placed(274, (0, text(name, 40)), (40, i16(number)),
                  (86, bytes([8, units["length"], units["force"], 0])),
                  (102, f32s([thick, bend])), (122, f32s([thick, material["UnitWeight"]])),
                  (262, bytes([4, 4]) + i16(6) + i16(material_id) + bytes([4, 4]) + i16(6)
                   + i16(material_id)))


def cpd_wall(number, name, section_kind, section, shear_material, thick, material, units):
    """TrelkCpdWallRec, 116 bytes: the force unit comes before the length unit."""
    return placed(116, (0, text(name, 40)), (40, i16(number)),
                  (42, bytes([3, units["force"], units["length"]])),
                  (48, i16(section_kind) + i16(section) + i16(5) + i16(shear_material)),
                  (56, f32s([thick, material["E"], thick])), (68, i16(number)),
                  (76, f32s([thick, material["UnitWeight"]])))


def cpd_gwall(number, name, vertical_kind, vertical, horizontal, shear_material, thick, material,
              units):
    """TrelkCpdGWallRec, 108 bytes."""
    return placed(108, (0, text(name, 40)), (40, i16(number)),
                  (42, bytes([4, units["force"], units["length"]])),
                  (48, i16(vertical_kind) + i16(vertical) + i16(12) + i16(horizontal) + i16(2)
                   + i16(shear_material) + i16(3)),
                  (64, f32(thick)), (72, f32s([45.0, 45.0])), (80, i16(0)),
                  (88, f32s([thick, material["UnitWeight"]])))


def element_groups(groups_members):
    """Group records and element records, each group led by its leading record.
    groups_members: (name, kind, option, [(node I, node J, compound, angle), ...])."""
    groups, elements = [], []
    for g, (group_name, kind, option, members) in enumerate(groups_members, start=1):
        first = len(elements) + 1
        groups.append(elem_group(group_name, kind, first, first + len(members)))
        elements.append(elem_record(0, 0, 0, len(elements) + 2))
        for k, (node_i, node_j, compound, angle) in enumerate(members, start=1):
            next_elem = 0 if k == len(members) else len(elements) + 2
            elements.append(elem_record(g, node_i, node_j, next_elem, compound, option, angle))
    return groups, elements


def frames():
    """A two-storey frame building in kip and inch (S = 1), see model.json: concrete columns,
    beams and braces, steel beams, columns and braces; hinges and end releases at I, at J and
    at both; an aluminium section whose frames vanish; a section of type 0 that is not read;
    a 30-character section label that outgrows the longer prefixes."""
    name = "frames"
    files = empty_files(name)
    u = UNITS_KIP_IN
    fixed, free = [True] * 6, [False] * 6
    grid_x, grid_y, levels = [0.0, 144.0, 288.0], [0.0, 240.0], [0.0, 144.0, 288.0]
    points = [(x, y, z, fixed if z == 0 else free, 0)
              for z in levels for y in grid_y for x in grid_x]
    nodes = node_records(points)
    # Node records: point k of the file (from 1) is record k + 1.
    A10, B10, C10, A20, B20, C20 = 2, 3, 4, 5, 6, 7
    A11, B11, C11, A21, B21, C21 = 8, 9, 10, 11, 12, 13
    A12, B12, C12, A22, B22, C22 = 14, 15, 16, 17, 18, 19

    # Materials as read; AL6061 (aluminium) is left out, so ALUM-TUBE has no material.
    conc = {"E": 3605.0, "Nu": 0.2, "G": 1502.0833, "Fu": 4.0, "ConcFc": 4.0, "UnitWeight": 8.68e-5}
    steel = {"E": 29000.0, "Nu": 0.3, "G": 11153.846, "Fu": 65.0, "UnitWeight": 2.836e-4}
    inelastic = [
        mat_inel(1, "MatIneFibRebar-A615", 0, 29000.0, 66.0, 99.0, 0.0, 0.2, u),
        mat_inel(2, "MatIneFibConc-CONC4", 1, 3605.0, 0.9 * 4.0, 4.0, 0.04, 0.02, u),
        mat_inel(3, "MatIneShearConc-CONC4", 2, 1502.0833, 0.0, 4.0 / 2, 0.0, 2.0, u),
    ]
    fibre = [mat_fiber(1, "MatElaFiberConc-CONC4", 3605.0, u),
             mat_fiber(2, "MatElaFiberSteel-A992", 29000.0, u)]
    shear = [mat_shear(1, "MatElaShearConc-CONC4", 1502.0833, u),
             mat_shear(2, "MatElaShearSteel-A992", 11153.846, u)]
    slab = [mat_slab(1, "MatElaSlabConc-CONC4", 3605.0, 0.2, u),
            mat_slab(2, "MatElaSlabSteel-A992", 29000.0, 0.3, u)]

    # Frame sections as read, with their place in the section list (UNUSED0, type 0, is not
    # read, so the places after it close up). CIRC12 names "conc4": the material link ignores case.
    c24 = {"area": 576.0, "As2": 480.0, "As3": 480.0, "J": 55738.9, "I22": 27648.0, "I33": 27648.0}
    w18 = {"area": 10.3, "As2": 5.373, "As3": 4.233, "J": 0.506, "I22": 15.3, "I33": 510.0}
    w18_label = "W18X35-GRAVITY-BEAM-LEVELS-1+2"
    b16 = {"area": 384.0, "As2": 320.0, "As3": 320.0, "J": 28508.2, "I22": 8192.0, "I33": 18432.0}
    hss = {"area": 7.58, "As2": 3.79, "As3": 3.79, "J": 61.3, "I22": 39.5, "I33": 39.5}
    circ = {"area": 113.097, "As2": 101.787, "As3": 101.787, "J": 2035.75, "I22": 1017.88,
            "I33": 1017.88}
    w14 = {"area": 26.5, "As2": 6.16, "As3": 14.9, "J": 4.06, "I22": 362.0, "I33": 999.0}
    steel_sections = [(2, w18_label, w18, 1), (5, "HSS6X6", hss, 0), (7, "W14X90", w14, 1)]
    conc_sections = [(1, "C24X24", c24, 2), (3, "B16X24", b16, 2), (6, "CIRC12", circ, 0)]

    # Cross sections and FEMA components: steel 1-3, concrete 4-6. The 30-character label
    # keeps its name after "XecBmS-" but outgrows "IneFemaBmS-": the name takes 2 + 1.
    beams, columns, fema_beams, fema_columns = section_components(steel_sections, conc_sections,
                                                                  steel, conc, u)
    assert name_with_suffix("XecColS-", w18_label, 2) == "XecColS-" + w18_label
    assert name_with_suffix("IneFemaBmS-", w18_label, 2) == "IneFemaBmS-3"

    # Release patterns in the order the frames meet them (I end, then J end); the pattern of
    # X0 is never read, since its section is not. Component 1 is "EmbedBeamRelease".
    rel_t, rel_m3, rel_am3t, rel_m2, rel_m2m3, rel_v2m3, rel_v3 = 2, 3, 4, 5, 6, 7, 8
    patterns = [
        [0, 0, 0, 1, 0, 0],   # 2: SB2 at I, also SB3 at I: "Release-T"
        [0, 0, 0, 0, 0, 1],   # 3: SB2 at J, CB2 at both ends, SB4 and SBR2: "Release-M3"
        [1, 0, 0, 1, 0, 1],   # 4: SB3 at J, SC2 at I: "Release-AM3T"
        [0, 0, 0, 0, 1, 0],   # 5: CB3 at I, SB5 at J: M2 only, "Release-" with nothing set
        [0, 0, 0, 0, 1, 1],   # 6: C5 at I: M2 is dropped, "Release-M3" once more
        [0, 1, 0, 0, 0, 1],   # 7: CBR2 at J: "Release-V2M3"
        [0, 0, 1, 0, 0, 0],   # 8: AL1 at I, whose frame vanishes: "Release-V3"
    ]
    releases = [release_record(1, "EmbedBeamRelease", [0, 0, 0, 0, 1, 0])]
    for number, source in enumerate(patterns, start=2):
        flags = release_flags(source)
        releases.append(release_record(number, release_name(flags), flags))
    assert [release_name(release_flags(p)) for p in patterns] == [
        "Release-T", "Release-M3", "Release-AM3T", "Release-", "Release-M3", "Release-V2M3",
        "Release-V3"]

    # Frame compounds, stage 1: eight passes, three sections each.
    compounds = plain_compounds(steel_sections, conc_sections, steel, conc, u)
    # Numbers of stage 1 that the elements use.
    cpd_bm_w18, cpd_fema_bm_w18, cpd_col_hss, cpd_fema_col_w14 = 1, 4, 8, 12
    cpd_bm_b16, cpd_fema_bm_b16, cpd_col_c24, cpd_fema_col_c24, cpd_fema_col_circ = 14, 17, 19, 22, 24

    # Stage 2, frames with releases in frame order; the section look-up compares I ends only.
    w18_weight = w18["area"] * steel["UnitWeight"]
    member = {"w18": member_part(3, 2, 4, 1, 1.0), "b16": member_part(3, 2, 3, 5, 1.0),
              "c24": member_part(3, 3, 6, 4, 1.0), "w14": member_part(3, 3, 7, 3, 1.0),
              "circ": member_part(3, 3, 6, 6, 1.0), "hss": member_part(3, 3, 7, 2, 1.0)}
    released = [
        # SB2 (T, M3): 25; the long label gives the running number plus 1. SB3 (T, AM3T) shares it.
        ("CpdRelBmSteel-26", [release_part(rel_t), member["w18"], release_part(rel_m3)], w18_weight),
        # CB2 (M3, M3): 26.
        ("CpdRelBmC-B16X24", [release_part(rel_m3), member["b16"], release_part(rel_m3)],
         b16["area"] * conc["UnitWeight"]),
        # CB3 (M2 only at I): 27, the same name as 26.
        ("CpdRelBmC-B16X24", [release_part(rel_m2), member["b16"]], b16["area"] * conc["UnitWeight"]),
        # SB4 (M3 at J only): 28; SB5 (M2 at J only) shares it: no I end is no I end.
        ("CpdRelBmSteel-29", [member["w18"], release_part(rel_m3)], w18_weight),
        # C5 (M2 M3 at I, hinge at J): 29.
        ("CpdRelColC-C24X24", [release_part(rel_m2m3), member["c24"]], c24["area"] * conc["UnitWeight"]),
        # SC2 (AM3T at I): 30.
        ("CpdRelColS-W14X90", [release_part(rel_am3t), member["w14"]], w14["area"] * steel["UnitWeight"]),
        # CBR2, a concrete brace (V2 M3 at J): 31.
        ("CpdRelColC-CIRC12", [member["circ"], release_part(rel_v2m3)], circ["area"] * conc["UnitWeight"]),
        # SBR2, a steel brace (M3, M3): 32. AL1 has no material and makes none.
        ("CpdRelColS-HSS6X6", [release_part(rel_m3), member["hss"], release_part(rel_m3)],
         hss["area"] * steel["UnitWeight"]),
    ]
    for cpd_name, parts, weight in released:
        compounds.append(cpd_frame(len(compounds) + 1, cpd_name, parts, weight, u))
    assert len(compounds) == 32
    assert name_with_suffix("CpdRelBmSteel-", w18_label, 25) == "CpdRelBmSteel-26"

    # Element groups in their fixed order: (name, kind, option, members as (I, J, compound, angle)).
    groups_members = [
        ("ElemConcCol", 3, 5, [
            (A10, A11, cpd_col_c24, 90.0),        # C1
            (A11, A12, cpd_fema_col_c24, 0.0),    # C2: hinge at I
            (A20, A21, cpd_fema_col_c24, 0.0),    # C3: hinges at 0.1 and 0.9
            (A21, A22, cpd_fema_col_c24, 30.0),   # C4: hinge at J; code 7 ignored, 0.5 dropped
            (B10, B11, 29, 0.0),                  # C5: the release beats the hinge
            (B20, B21, cpd_col_c24, 0.0),         # C6: code 7 at I ignored, code 6 at 0.5 dropped
            (C11, C12, cpd_col_c24, 0.0)]),       # C7
        ("ElemConcBeam", 2, 1, [
            (A11, B11, cpd_bm_b16, 0.0),          # CB1
            (B11, C11, 26, 0.0),                  # CB2
            (A12, B12, 27, 0.0),                  # CB3
            (A11, A21, cpd_fema_bm_b16, 45.0)]),  # CB4: hinges at both ends
        ("ElemConcBrace", 5, 1, [
            (B11, C12, cpd_fema_col_circ, 0.0),   # CBR1: hinge at I gives the FEMA column
            (C10, B11, 31, 0.0)]),                # CBR2
        ("ElemSteelCol", 3, 5, [
            (C10, C11, cpd_fema_col_w14, 0.0),    # SC1: hinge at J
            (C20, C21, 30, -15.3)]),              # SC2
        ("ElemSteelBeam", 2, 1, [
            (A22, B22, cpd_bm_w18, 12.5),         # SB1
            (B22, C22, 25, 0.0),                  # SB2
            (A21, B21, 25, 0.0),                  # SB3
            (B21, C21, 28, 0.0),                  # SB4
            (B12, C12, 28, 0.0),                  # SB5
            (A12, A22, cpd_fema_bm_w18, 0.0)]),   # SB6: hinge at I
        ("ElemSteelBrace", 5, 1, [
            (A10, B11, cpd_col_hss, 0.0),         # SBR1: a steel brace stays elastic
            (B20, C21, 32, 0.0)]),                # SBR2
    ]
    groups, elements = element_groups(groups_members)
    assert len(elements) == 29

    # The source frames in model order (X0 is not read) with their elements; AL1 has no
    # material, so no element, no mass and no weight.
    labels = ["%s%d-%d" % ("ABC"[xi], yi + 1, zi) for zi in range(3) for yi in range(2)
              for xi in range(3)]
    source = plain_source(source_nodes([(lab,) + pt[:4] for lab, pt in zip(labels, points)]),
                          gravity=u["gravity"])
    conc["UnitMass"], steel["UnitMass"] = 2.248e-7, 7.345e-7
    source["frames"] = source_frames(source["nodes"], elements, [
        ("CB1", b16, conc, "A1-1", "B1-1", 10), ("C1", c24, conc, "A1-0", "A1-1", 2),
        ("C2", c24, conc, "A1-1", "A1-2", 3), ("SB1", w18, steel, "A2-2", "B2-2", 21),
        ("SB2", w18, steel, "B2-2", "C2-2", 22), ("CB2", b16, conc, "B1-1", "C1-1", 11),
        ("C3", c24, conc, "A2-0", "A2-1", 4), ("SB3", w18, steel, "A2-1", "B2-1", 23),
        ("C4", c24, conc, "A2-1", "A2-2", 5), ("CB3", b16, conc, "A1-2", "B1-2", 12),
        ("SB4", w18, steel, "B2-1", "C2-1", 24), ("C5", c24, conc, "B1-0", "B1-1", 6),
        ("SB5", w18, steel, "B1-2", "C1-2", 25), ("CB4", b16, conc, "A1-1", "A2-1", 13),
        ("SB6", w18, steel, "A1-2", "A2-2", 26), ("C6", c24, conc, "B2-0", "B2-1", 7),
        ("SC1", w14, steel, "C1-0", "C1-1", 18), ("SC2", w14, steel, "C2-0", "C2-1", 19),
        ("SBR1", hss, steel, "A1-0", "B1-1", 28), ("CBR1", circ, conc, "B1-1", "C1-2", 15),
        ("CBR2", circ, conc, "C1-0", "B1-1", 16), ("SBR2", hss, steel, "B2-0", "C2-1", 29),
        ("AL1", {"area": 4.5}, None, "B2-1", "B2-2", 0), ("C7", c24, conc, "C1-1", "C1-2", 8)])
    # Every base node is fixed; the nine frames that stand on one are cut at their I end.
    assert base_cut_members(source) == ([(0, e) for e in (2, 4, 6, 7, 18, 19, 28, 16, 29)], [])
    # Top A1-2 (record 14) straight above A1-0 (record 2): the first pair at distance 0.
    assert drift_pair(source["nodes"]) == (14, 2)

    # MaxComponentCount: the 32 frame compounds count by count, ahead of every other list.
    library = component_library({
        "FemaBeam": fema_beams, "FemaColumn": fema_columns, "EndZone": [DEFAULT_END_ZONE],
        "Release": releases, "MatInel": inelastic, "MatElasticFiber": fibre,
        "MatElasticShear": shear, "MatElasticSlab": slab, "XecBeam": beams, "XecColumn": columns,
        "CpdFrame": compounds}, max_count=32)
    files["TRKDS"] = s_file(name, u, nodes, 19, 18, 200, library, groups=groups,
                            group_capacity=grown_capacity(6), elements=elements,
                            element_capacity=grown_capacity(29), **measured(source, 19))
    return files


def frames_kn():
    """One line of frames in kilonewton and metre, so S and L are not 1: concrete columns,
    beam and brace, steel column, beams and brace; a pinned base and one fixed in R3 too; a
    diaphragm on the roof. No rebar in the model: the host creates "Rebar" with its built-in
    values, after the other materials."""
    name = "frames-kn"
    files = empty_files(name)
    u = UNITS_KN_M
    fixed, free = [True] * 6, [False] * 6
    points = [
        (0.0, 0.0, 0.0, fixed, 0),                                    # A0
        (4.0, 0.0, 0.0, [True, True, True, False, False, False], 0),  # B0: pinned
        (8.0, 0.0, 0.0, [True, True, True, False, False, True], 0),   # C0
        (0.0, 0.0, 4.0, free, 0), (4.0, 0.0, 4.0, free, 0), (8.0, 0.0, 4.0, free, 0),  # A1 B1 C1
        (0.0, 0.0, 8.0, free, 1), (4.0, 0.0, 8.0, free, 1), (8.0, 0.0, 8.0, free, 1),  # A2 B2 C2: D1
    ]
    nodes = node_records(points)
    A0, B0, C0, A1, B1, C1, A2, B2, C2 = range(2, 11)

    # Materials as read: S355, C30, then the created "Rebar" (uniaxial).
    steel = {"E": 2e8, "Nu": 0.3, "G": 76923077.0, "Fu": 490000.0, "UnitWeight": 76.97}
    conc = {"E": 3.2e7, "Nu": 0.2, "G": 13333333.0, "Fu": 30000.0, "ConcFc": 30000.0,
            "UnitWeight": 24.0}
    inelastic = [
        mat_inel(1, "MatIneFibRebar-Rebar", 0, built_in_stress(29000.0, u), built_in_stress(66.0, u),
                 built_in_stress(99.0, u), 0.0, 0.2, u),
        mat_inel(2, "MatIneFibConc-C30", 1, 3.2e7, 0.9 * 30000.0, 30000.0, 0.04, 0.02, u),
        mat_inel(3, "MatIneShearConc-C30", 2, 13333333.0, 0.0, 30000.0 / 2, 0.0, 2.0, u),
    ]
    fibre = [mat_fiber(1, "MatElaFiberSteel-S355", 2e8, u), mat_fiber(2, "MatElaFiberConc-C30", 3.2e7, u)]
    shear = [mat_shear(1, "MatElaShearSteel-S355", 76923077.0, u),
             mat_shear(2, "MatElaShearConc-C30", 13333333.0, u)]
    slab = [mat_slab(1, "MatElaSlabSteel-S355", 2e8, 0.3, u), mat_slab(2, "MatElaSlabConc-C30", 3.2e7, 0.2, u)]

    c400 = {"area": 0.16, "As2": 0.1333, "As3": 0.1333, "J": 0.0036, "I22": 0.002133, "I33": 0.002133}
    b300 = {"area": 0.18, "As2": 0.15, "As3": 0.15, "J": 0.003708, "I22": 0.00135, "I33": 0.0054}
    ipe = {"area": 0.008446, "As2": 0.003848, "As3": 0.004467, "J": 5.1e-7, "I22": 1.318e-5,
           "I33": 2.313e-4}
    heb = {"area": 0.01491, "As2": 0.003206, "As3": 0.0075, "J": 1.85e-6, "I22": 8.563e-5,
           "I33": 2.517e-4}
    angle = {"area": 0.00192, "As2": 0.001, "As3": 0.001, "J": 6.4e-8, "I22": 7.3e-7, "I33": 1.77e-6}
    c250 = {"area": 0.0625, "As2": 0.05208, "As3": 0.05208, "J": 0.00055, "I22": 0.0003255,
            "I33": 0.0003255}
    # (place in the section list, label, constants, shape)
    steel_sections = [(3, "IPE400", ipe, 1), (4, "HEB300", heb, 1), (5, "L100X10", angle, 0)]
    conc_sections = [(1, "C400", c400, 2), (2, "B300X600", b300, 2), (6, "C250", c250, 2)]

    beams, columns, fema_beams, fema_columns = section_components(steel_sections, conc_sections,
                                                                  steel, conc, u)

    # Release patterns: K3 at J (R1 R2: "Release-T"), B2 at both ends (M3).
    releases = [release_record(1, "EmbedBeamRelease", [0, 0, 0, 0, 1, 0]),
                release_record(2, "Release-T", [0, 0, 0, 0, 0, 1]),
                release_record(3, "Release-M3", [0, 0, 0, 0, 1, 0])]

    compounds = plain_compounds(steel_sections, conc_sections, steel, conc, u)
    compounds.append(cpd_frame(25, "CpdRelColC-C400", [member_part(3, 3, 6, 4, 1.0), release_part(2)],
                               c400["area"] * conc["UnitWeight"], u))                     # K3
    compounds.append(cpd_frame(26, "CpdRelBmSteel-IPE400",
                               [release_part(3), member_part(3, 2, 4, 1, 1.0), release_part(3)],
                               ipe["area"] * steel["UnitWeight"], u))                     # B2

    groups_members = [
        ("ElemConcCol", 3, 5, [(A0, A1, 19, 0.0),      # K1: CpdColC-C400
                               (A1, A2, 22, 0.0),      # K2: CpdFemaColC-C400
                               (C0, C1, 25, 0.0)]),    # K3
        ("ElemConcBeam", 2, 1, [(A1, B1, 17, 0.0)]),   # B1: hinge at 0.95, CpdFemaBmC-B300X600
        ("ElemConcBrace", 5, 1, [(B1, A2, 24, 0.0)]),  # BR2: CpdFemaColC-C250
        ("ElemSteelCol", 3, 5, [(C1, C2, 11, 90.0)]),  # K4: CpdFemaColS-HEB300
        ("ElemSteelBeam", 2, 1, [(B1, C1, 26, 0.0),    # B2
                                 (A2, C2, 4, 0.0)]),   # B3: CpdFemaBmS-IPE400
        ("ElemSteelBrace", 5, 1, [(B0, C1, 9, 0.0)]),  # BR1: CpdColS-L100X10, hinge not looked at
    ]
    groups, elements = element_groups(groups_members)
    assert len(elements) == 15

    labels = ["A0", "B0", "C0", "A1", "B1", "C1", "A2", "B2", "C2"]
    source = plain_source(source_nodes([(lab,) + pt[:4] for lab, pt in zip(labels, points)]),
                          gravity=u["gravity"])
    steel["UnitMass"], conc["UnitMass"] = 7.849, 2.447
    source["frames"] = source_frames(source["nodes"], elements, [
        ("K1", c400, conc, "A0", "A1", 2), ("K2", c400, conc, "A1", "A2", 3),
        ("K3", c400, conc, "C0", "C1", 4), ("K4", heb, steel, "C1", "C2", 10),
        ("B1", b300, conc, "A1", "B1", 6), ("B2", ipe, steel, "B1", "C1", 12),
        ("B3", ipe, steel, "A2", "C2", 13), ("BR1", angle, steel, "B0", "C1", 15),
        ("BR2", c250, conc, "B1", "A2", 8)])
    # K1, K3 and the brace BR1 stand on supports (B0 pinned, C0 fixed in R3 too).
    assert base_cut_members(source) == ([(0, 2), (0, 4), (0, 15)], [])
    # Top A2 (record 8) straight above A0 (record 2).
    assert drift_pair(source["nodes"]) == (8, 2)

    library = component_library({
        "FemaBeam": fema_beams, "FemaColumn": fema_columns, "EndZone": [DEFAULT_END_ZONE],
        "Release": releases, "MatInel": inelastic, "MatElasticFiber": fibre,
        "MatElasticShear": shear, "MatElasticSlab": slab, "XecBeam": beams, "XecColumn": columns,
        "CpdFrame": compounds}, max_count=26)
    files["TRKDS"] = s_file(name, u, nodes, 10, 9, 200, library, diaphragms=[diaphragm_record("D1")],
                            groups=groups, group_capacity=grown_capacity(6), elements=elements,
                            element_capacity=grown_capacity(15), **measured(source, 10))
    return files


def sections():
    """No frames and no areas: the interest is in the sections. Frame sections of every shape
    rule, a non-prismatic one, one of type 0 and one of rebar; thin shells of concrete (of
    thickness 0) and of steel, a membrane and a plane section that are not read, and layered
    shells of every LayerTrelkType (see model.json)."""
    name = "sections"
    files = empty_files(name)
    u = UNITS_KN_M
    points = [("P1", 0.0, 0.0, 0.0, [True] * 6), ("P2", 2.5, -1.5, 3.2, [False] * 6)]
    nodes = node_records([p[1:] + (0,) for p in points])
    # No frame, no area: no mass and no cut; the higher node is the last, so no drift pair.
    source = plain_source(source_nodes(points))
    assert drift_pair(source["nodes"]) is None

    # Materials as read, in the order C30, B500, C40, S355, B420. C40 takes its strength from
    # its curve's peak compression, B420 its eFu from its curve's peak; B500 is uniaxial.
    c30 = {"E": 3e7, "Nu": 0.2, "G": 1.25e7, "Fu": 30000.0, "ConcFc": 30000.0, "UnitWeight": 24.0}
    c40 = {"E": 3.5e7, "Nu": 0.18, "G": 14830508.0, "Fu": 42000.0, "ConcFc": 42000.0,
           "UnitWeight": 25.0}
    s355 = {"E": 2e8, "Nu": 0.3, "G": 76923077.0, "Fu": 490000.0, "UnitWeight": 76.97}
    inelastic = [
        mat_inel(1, "MatIneFibRebar-B500", 0, 2e8, 550000.0, 605000.0, 0.0, 0.2, u),
        mat_inel(2, "MatIneFibRebar-B420", 0, 1.99e8, 462000.0, 540000.0, 0.0, 0.2, u),
        mat_inel(3, "MatIneFibConc-C30", 1, 3e7, 0.9 * 30000.0, 30000.0, 0.04, 0.02, u),
        mat_inel(4, "MatIneFibConc-C40", 1, 3.5e7, 0.9 * 42000.0, 42000.0, 0.04, 0.02, u),
        mat_inel(5, "MatIneShearConc-C30", 2, 1.25e7, 0.0, 30000.0 / 2, 0.0, 2.0, u),
        mat_inel(6, "MatIneShearConc-C40", 2, 14830508.0, 0.0, 42000.0 / 2, 0.0, 2.0, u),
    ]
    inel_c30, inel_c40, inel_shear_c30, inel_shear_c40 = 3, 4, 5, 6
    fibre = [mat_fiber(1, "MatElaFiberConc-C30", 3e7, u), mat_fiber(2, "MatElaFiberConc-C40", 3.5e7, u),
             mat_fiber(3, "MatElaFiberSteel-S355", 2e8, u)]
    shear = [mat_shear(1, "MatElaShearConc-C30", 1.25e7, u),
             mat_shear(2, "MatElaShearConc-C40", 14830508.0, u),
             mat_shear(3, "MatElaShearSteel-S355", 76923077.0, u)]
    slab = [mat_slab(1, "MatElaSlabConc-C30", 3e7, 0.2, u), mat_slab(2, "MatElaSlabConc-C40", 3.5e7, 0.18, u),
            mat_slab(3, "MatElaSlabSteel-S355", 2e8, 0.3, u)]
    fibre_c30, fibre_c40, fibre_s355 = 1, 2, 3
    shear_c30, shear_s355 = 1, 3
    slab_c30, slab_s355 = 1, 3
    # The rebar fibre of every wall: the last steel's fibre (3) is replaced by the last
    # rebar's inelastic material, B420.
    rebar_fibre = 2

    # Frame sections as read: X0 (type 0) is not, so TAPER is 5th and BAR 6th. TAPER takes
    # C30 from its first segment's start section C500X500, not its own S355, and keeps its
    # type 14: no shape. BAR, of rebar, makes nothing.
    w310 = {"area": 0.00949, "As2": 0.00345, "As3": 0.0052, "J": 3.6e-7, "I22": 2.2e-5, "I33": 1.65e-4}
    c500 = {"area": 0.25, "As2": 0.2083, "As3": 0.2083, "J": 0.0088, "I22": 0.005208, "I33": 0.005208}
    pipe = {"area": 0.0036, "As2": 0.0018, "As3": 0.0018, "J": 1.6e-5, "I22": 8e-6, "I33": 8e-6}
    circ = {"area": 0.1257, "As2": 0.1131, "As3": 0.1131, "J": 0.002513, "I22": 0.001257,
            "I33": 0.001257}
    taper = {"area": 0.2, "As2": 0.16, "As3": 0.16, "J": 0.006, "I22": 0.004, "I33": 0.004}
    steel_sections = [(1, "W310", w310, 1), (3, "PIPE", pipe, 0)]
    conc_sections = [(2, "C500X500", c500, 2), (4, "CIRC", circ, 0), (5, "TAPER", taper, 0)]
    beams, columns, fema_beams, fema_columns = section_components(steel_sections, conc_sections,
                                                                  s355, c30, u)
    compounds = plain_compounds(steel_sections, conc_sections, s355, c30, u)
    assert len(compounds) == 20

    # Area sections as read: MEMB (membrane) and PLANE (plane) are not, so the places are
    # PLATE-S 1, SLAB0 2, LAY-NONE 3, WALL-FIB 4, LAY-TRANS 5, GWALL-H 6, the long label 7.
    # LAY-NONE (rebar and an unknown material) is -1 and LAY-TRANS (no concrete layer meets a
    # rule: 45 degrees, then linear) is 0: neither makes a record.
    slab0_thick = 0.001                       # 0 and 5e-7 both floored
    # WALL-FIB, type 1 (C30 at 0 with S22 nonlinear; the C40 plate layer before it is not
    # structural but counts for bending). Vertical rebar: RV at 90 and RV87; horizontal: RH;
    # R45 counts nowhere, RP is a plate layer.
    fib_thick, fib_bend = 0.25, 0.05 + 0.25
    fib_rebar_v = 0.0015 + 0.0005
    # GWALL-H, type 2 (C40 at 0.05 with S11 nonlinear); rebar at -90 is vertical.
    gh_thick = gh_bend = 0.3
    gh_rebar_h = 0.0016
    # The long label, type 3: C40 at 87 is not near 90, C30 at 90 with S11 and S22 nonlinear
    # is. Vertical: 87 and -90; horizontal: 0 and -3. Both concrete layers count.
    hv_label = "GENERAL-WALL-BOTH-DIRS-H-V"
    hv_thick = hv_bend = 0.05 + 0.2
    hv_rebar_v, hv_rebar_h = 0.001 + 0.0008, 0.0011 + 0.0004
    assert name_with_suffix("XecGWallCIneH-", hv_label, 7) == "XecGWallCIneH-" + hv_label
    assert name_with_suffix("CpdGWallConcHV-", hv_label, 7) == "CpdGWallConcHV-8"

    wall_elastic = [
        xec_wall_elastic(1, "XecWallElaS-PLATE-S", 11, 0.02, 0.015, s355, fibre_s355, u),
        xec_wall_elastic(2, "XecWallElaC-SLAB0", 11, slab0_thick, slab0_thick, c30, fibre_c30, u),
        xec_wall_elastic(3, "XecGWallElaH-GWALL-H", 13, gh_thick, gh_bend, c40, fibre_c40, u),
    ]
    wall_inel = [
        xec_wall_inel(1, "Notused-XSecWallCIne-SLAB0", 10, slab0_thick, slab0_thick, 0.4, c30,
                      inel_c30, rebar_fibre, u),
        xec_wall_inel(2, "XecWallCIneV-WALL-FIB", 10, fib_thick, fib_bend,
                      100 * fib_rebar_v / fib_thick, c30, inel_c30, rebar_fibre, u),
        xec_wall_inel(3, "XecGWallCIneH-GWALL-H", 12, gh_thick, gh_bend, 100 * gh_rebar_h / gh_thick,
                      c40, inel_c40, rebar_fibre, u),
        xec_wall_inel(4, "XecGWallCIneH-" + hv_label, 12, hv_thick, hv_bend,
                      100 * hv_rebar_h / hv_thick, c30, inel_c30, rebar_fibre, u),
        xec_wall_inel(5, "XecGWallCIneV-" + hv_label, 12, hv_thick, hv_bend,
                      100 * hv_rebar_v / hv_thick, c30, inel_c30, rebar_fibre, u),
    ]
    slabs = [xec_slab(1, "XecElaSlabS-PLATE-S", 0.02, 0.015, s355, slab_s355, u),
             xec_slab(2, "XecElaSlabC-SLAB0", slab0_thick, slab0_thick, c30, slab_c30, u)]
    walls = [
        cpd_wall(1, "CpdWallSteelEla-PLATE-S", 11, 1, shear_s355, 0.02, s355, u),
        cpd_wall(2, "CpdWallConcEla-SLAB0", 11, 2, shear_c30, slab0_thick, c30, u),
        cpd_wall(3, "CpdWallConcV-WALL-FIB", 10, 2, shear_c30, fib_thick, c30, u),
    ]
    general_walls = [
        cpd_gwall(1, "CpdGWallConcH-GWALL-H", 13, 3, 3, inel_shear_c40, gh_thick, c40, u),
        cpd_gwall(2, "CpdGWallConcHV-8", 12, 5, 4, inel_shear_c30, hv_thick, c30, u),
    ]

    # MaxComponentCount: the 20 frame compounds by count; the beam, column, shear and slab
    # lists stand at capacity 12.
    library = component_library({
        "FemaBeam": fema_beams, "FemaColumn": fema_columns, "EndZone": [DEFAULT_END_ZONE],
        "Release": [EMBED_BEAM_RELEASE], "MatInel": inelastic, "MatElasticFiber": fibre,
        "MatElasticShear": shear, "MatElasticSlab": slab, "XecBeam": beams, "XecColumn": columns,
        "XecSlab": slabs, "XecWallInel": wall_inel, "XecWallElastic": wall_elastic,
        "CpdFrame": compounds, "CpdWall": walls, "CpdGWall": general_walls}, max_count=20)
    files["TRKDS"] = s_file(name, u, nodes, 3, 2, 200, library, **measured(source, 3))
    return files


# --- walls-slabs -------------------------------------------------------------------------

COINCIDENT = 0.000001


def area_new_node(nodes, number, x, y, z):
    """A node of a divided triangle: an existing node within the tolerance in all three
    coordinates, or a new unsupported node named "NewNode" and the first free number."""
    for node in nodes:
        if (abs(node["x"] - x) < COINCIDENT and abs(node["y"] - y) < COINCIDENT
                and abs(node["z"] - z) < COINCIDENT):
            return node
    labels = {node["label"] for node in nodes}
    while "NewNode%d" % number in labels:
        number += 1
    node = {"label": "NewNode%d" % number, "x": x, "y": y, "z": z, "restrained": [False] * 6,
            "id": len(nodes) + 2}
    nodes.append(node)
    return node


def sorted_area_nodes(corners):
    """The four corners sorted by elevation with the exchange scheme (ties stay), then the
    upper pair turned to run in the plan direction of the lower pair."""
    p = list(corners)
    for i in range(4):
        for j in range(i + 1, 4):
            if p[j]["z"] < p[i]["z"]:
                p[i], p[j] = p[j], p[i]
    if ((p[1]["x"] - p[0]["x"]) * (p[3]["x"] - p[2]["x"])
            + (p[1]["y"] - p[0]["y"]) * (p[3]["y"] - p[2]["y"])) < 0:
        p[2], p[3] = p[3], p[2]
    return p


def area_orientation(corners):
    """1 wall, 2 floor, 3 ramp, from the normal of the two diagonals."""
    p = [(n["x"], n["y"], n["z"]) for n in sorted_area_nodes(corners)]

    def sub(a, b):
        return (a[0] - b[0], a[1] - b[1], a[2] - b[2])

    def length(v):
        return math.sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2])

    if length(sub(p[3], p[2])) < 0.1 or length(sub(p[1], p[0])) < 0.1:
        return 2
    a, b = sub(p[2], p[1]), sub(p[3], p[0])
    n = (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])
    m = length(n)
    if m < COINCIDENT:
        m = 0.001
    nz = n[2] / m
    pi = 3.1415926
    if math.cos(5 * pi / 180) < abs(nz):
        return 2
    if abs(nz) < math.cos(85 * pi / 180):
        return 1
    return 3


def read_areas(nodes, host_areas, sections):
    """The areas as read: quadrilaterals as they stand, triangles divided into three on new
    nodes, areas of other sections or of five nodes left out; then every area in normal
    order. Each area: label, section name, its four nodes."""
    by_label = {}
    for node in nodes:
        by_label.setdefault(node["label"], node)
    areas, c = [], 0
    for label, section, points in host_areas:
        if section not in sections:
            continue
        corners = [by_label[p] for p in points]
        if len(corners) == 4:
            areas.append({"label": label, "section": section, "nodes": corners})
        elif len(corners) == 3:
            p1, p2, p3 = corners
            c += 1

            def centroid(k):
                m = (p1[k] + p2[k]) / 2
                return (m + m + p3[k]) / 3

            def middle(a, b):
                return [(a[k] + b[k]) / 2 for k in "xyz"]

            centre = area_new_node(nodes, c + 1, *[centroid(k) for k in "xyz"])
            m12 = area_new_node(nodes, c + 2, *middle(p1, p2))
            m23 = area_new_node(nodes, c + 3, *middle(p2, p3))
            m31 = area_new_node(nodes, c + 4, *middle(p3, p1))
            c += 4
            for part in ([p1, m12, centre, m31], [p2, m23, centre, m12], [p3, m31, centre, m23]):
                areas.append({"label": label, "section": section, "nodes": part})
    for area in areas:
        area["nodes"] = sorted_area_nodes(area["nodes"])
    return areas


def elem_record_full(group, nodes, next_elem, source, kind, option, component, angle=0.0):
    """TrelkElemRec, 92 bytes, with up to four nodes."""
    nodes = list(nodes) + [0] * (4 - len(nodes))
    return placed(92, (0, i16(group)), (6, b"".join(i32(n) for n in nodes)), (22, i32(next_elem)),
                  (26, bytes([6])), (28, bytes([source, kind, option, option])),
                  (42, i16(component)), (64, f32s([angle, angle])))


def mixed_element_groups(groups_members):
    """Group records and element records of groups whose members are
    (nodes, source, kind, option, component, angle); each group is led by its leading record."""
    groups, elements = [], []
    for g, (group_name, kind, members) in enumerate(groups_members, start=1):
        first = len(elements) + 1
        groups.append(elem_group(group_name, kind, first, first + len(members)))
        elements.append(elem_record(0, 0, 0, len(elements) + 2))
        for k, (nodes, source, comp_kind, option, component, angle) in enumerate(members, start=1):
            next_elem = 0 if k == len(members) else len(elements) + 2
            elements.append(elem_record_full(g, nodes, next_elem, source, comp_kind, option,
                                             component, angle))
    return groups, elements


# Library lists whose capacity, not count, raises MaxComponentCount (besides the releases).
BY_CAPACITY = ("MatElasticShear", "MatElasticSlab", "XecBeam", "XecColumn")


def max_component_count(records):
    """The largest value that an Add of the library raised MaxComponentCount to: the capacity
    for the shear and slab materials, the beam and column sections and the releases (whose
    capacity grows by 5), the count for the others; the general-wall compounds take no part."""
    largest = 1
    for name, recs in records.items():
        if name == "CpdGWall" or not recs:
            continue
        if name == "Release":
            value = 1
            for n in range(1, len(recs) + 1):
                if n > value:
                    value += 5
        elif name in BY_CAPACITY:
            value = grown_capacity(len(recs))
        else:
            value = len(recs)
        largest = max(largest, value)
    return largest


def walls_slabs():
    """A small wall-and-slab building in kilonewton and metre (see model.json): thin concrete
    and steel walls, layered fiber and general walls, floors of triangles divided on shared
    mid-side nodes, a ramp of a steel and a concrete triangle, a layered landing (a floor that
    becomes a wall element), a parapet of a thin rebar shell, columns and beams that make
    embedded beams; a membrane triangle, a plane section and a five-noded area that are not
    read."""
    name = "walls-slabs"
    files = empty_files(name)
    u = UNITS_KN_M
    fixed, free = [True] * 6, [False] * 6
    host_points = [
        ("A0", 0, 0, 0, fixed), ("B0", 3, 0, 0, fixed), ("C0", 6, 0, 0, fixed),
        ("D0", 0, 4, 0, fixed), ("E0", 6, 4, 0, fixed),
        ("A1", 0, 0, 3, free), ("B1", 3, 0, 3, free), ("C1", 6, 0, 3, free), ("D1", 0, 4, 3, free),
        # A host point that bears the name the first triangle would give its first mid-side.
        ("NewNode3", 6, 4, 3, free),
        ("D2", 0, 7, 4.5, free), ("E2", 6, 7, 4.5, free), ("E3", 6, 9, 4.5, free),
        ("D3", 0, 9, 4.5, free),
        # K stands where the centroid of F1 falls: F1 uses it.
        ("K", 4, 1.3333333333333333, 3, free),
        ("D4", 0, 7, 5.5, free), ("E4", 6, 7, 5.5, free),
    ]
    nodes = [{"label": lab, "x": float(x), "y": float(y), "z": float(z), "restrained": r,
              "id": k + 2} for k, (lab, x, y, z, r) in enumerate(host_points)]
    host_ids = {n["label"]: n["id"] for n in nodes}

    # Materials as read: C30, S355, B500 (uniaxial).
    conc = {"E": 3e7, "Nu": 0.2, "G": 1.25e7, "Fu": 30000.0, "ConcFc": 30000.0, "UnitWeight": 24.0}
    steel = {"E": 2e8, "Nu": 0.3, "G": 76923077.0, "Fu": 490000.0, "UnitWeight": 76.97}
    inelastic = [
        mat_inel(1, "MatIneFibRebar-B500", 0, 2e8, 550000.0, 605000.0, 0.0, 0.2, u),
        mat_inel(2, "MatIneFibConc-C30", 1, 3e7, 0.9 * 30000.0, 30000.0, 0.04, 0.02, u),
        mat_inel(3, "MatIneShearConc-C30", 2, 1.25e7, 0.0, 30000.0 / 2, 0.0, 2.0, u),
    ]
    fibre = [mat_fiber(1, "MatElaFiberConc-C30", 3e7, u), mat_fiber(2, "MatElaFiberSteel-S355", 2e8, u)]
    shear = [mat_shear(1, "MatElaShearConc-C30", 1.25e7, u),
             mat_shear(2, "MatElaShearSteel-S355", 76923077.0, u)]
    slab = [mat_slab(1, "MatElaSlabConc-C30", 3e7, 0.2, u), mat_slab(2, "MatElaSlabSteel-S355", 2e8, 0.3, u)]
    fibre_id = {"C30": 1, "S355": 2}
    shear_id = {"C30": 1, "S355": 2}
    slab_id = {"C30": 1, "S355": 2}
    inel_c30, inel_shear_c30 = 2, 3
    rebar_fibre = 1                          # the rebar's inelastic material replaces the steel's
    rebar = {"E": 2e8, "Nu": 0.05, "G": 1e8}   # uniaxial: Nu 0.05, G = E / 2
    materials = {"C30": (2, conc), "S355": (1, steel), "B500": (6, rebar)}

    # Frame sections: C400 (concrete, rectangular) first, IPE300 (steel I) second.
    c400 = {"area": 0.16, "As2": 0.1333, "As3": 0.1333, "J": 0.0036, "I22": 0.002133, "I33": 0.002133}
    ipe = {"area": 0.005381, "As2": 0.002568, "As3": 0.00321, "J": 2.01e-7, "I22": 6.04e-6,
           "I33": 8.356e-5}
    steel_sections = [(2, "IPE300", ipe, 1)]
    conc_sections = [(1, "C400", c400, 2)]
    beams, columns, fema_beams, fema_columns = section_components(steel_sections, conc_sections,
                                                                  steel, conc, u)
    compounds = plain_compounds(steel_sections, conc_sections, steel, conc, u)
    cpd_bm_ipe, cpd_col_c400 = 1, 7

    # Area sections as read (MEMB, a membrane, and PLANE, of type 2, are not): WALL200 1,
    # SLAB180 2, PLATE-S 3, LWALL-FIB 4, LWALL-GH 5, LWALL-HV 6, MESH-R 7. MESH-R, a thin
    # shell of rebar, makes no wall, slab or compound record and no wall or slab element.
    thin = {"WALL200": ("C30", 0.2, 0.2), "SLAB180": ("C30", 0.18, 0.15),
            "PLATE-S": ("S355", 0.012, 0.012), "MESH-R": ("B500", 0.01, 0.01)}
    # Layered: (LayerTrelkType, thickness, bending, rebar V, rebar H); concrete C30 in all.
    # LWALL-FIB: C30 at 0 with S22 nonlinear, a fiber wall. LWALL-GH: C30 at 0 with S11
    # nonlinear, a general wall (horizontal). LWALL-HV: C30 at 90 with both, both directions.
    layered = {"LWALL-FIB": (1, 0.25, 0.25, 0.0012, 0.001), "LWALL-GH": (2, 0.3, 0.3, 0.0015, 0.0016),
               "LWALL-HV": (3, 0.2, 0.2, 0.001, 0.0011)}
    sections = list(thin) + list(layered)

    wall_elastic = [
        xec_wall_elastic(1, "XecWallElaC-WALL200", 11, 0.2, 0.2, conc, fibre_id["C30"], u),
        xec_wall_elastic(2, "XecWallElaC-SLAB180", 11, 0.18, 0.15, conc, fibre_id["C30"], u),
        xec_wall_elastic(3, "XecWallElaS-PLATE-S", 11, 0.012, 0.012, steel, fibre_id["S355"], u),
        xec_wall_elastic(4, "XecGWallElaH-LWALL-GH", 13, 0.3, 0.3, conc, fibre_id["C30"], u),
    ]
    _, fib_t, fib_b, fib_v, _ = layered["LWALL-FIB"]
    _, gh_t, gh_b, _, gh_h = layered["LWALL-GH"]
    _, hv_t, hv_b, hv_v, hv_h = layered["LWALL-HV"]
    wall_inel = [
        xec_wall_inel(1, "Notused-XSecWallCIne-WALL200", 10, 0.2, 0.2, 0.4, conc, inel_c30,
                      rebar_fibre, u),
        xec_wall_inel(2, "Notused-XSecWallCIne-SLAB180", 10, 0.18, 0.15, 0.4, conc, inel_c30,
                      rebar_fibre, u),
        xec_wall_inel(3, "XecWallCIneV-LWALL-FIB", 10, fib_t, fib_b, 100 * fib_v / fib_t, conc,
                      inel_c30, rebar_fibre, u),
        xec_wall_inel(4, "XecGWallCIneH-LWALL-GH", 12, gh_t, gh_b, 100 * gh_h / gh_t, conc,
                      inel_c30, rebar_fibre, u),
        xec_wall_inel(5, "XecGWallCIneH-LWALL-HV", 12, hv_t, hv_b, 100 * hv_h / hv_t, conc,
                      inel_c30, rebar_fibre, u),
        xec_wall_inel(6, "XecGWallCIneV-LWALL-HV", 12, hv_t, hv_b, 100 * hv_v / hv_t, conc,
                      inel_c30, rebar_fibre, u),
    ]
    slabs = [xec_slab(1, "XecElaSlabC-WALL200", 0.2, 0.2, conc, slab_id["C30"], u),
             xec_slab(2, "XecElaSlabC-SLAB180", 0.18, 0.15, conc, slab_id["C30"], u),
             xec_slab(3, "XecElaSlabS-PLATE-S", 0.012, 0.012, steel, slab_id["S355"], u)]
    slab_xsect = {"WALL200": 1, "SLAB180": 2, "PLATE-S": 3}
    walls = [
        cpd_wall(1, "CpdWallConcEla-WALL200", 11, 1, shear_id["C30"], 0.2, conc, u),
        cpd_wall(2, "CpdWallConcEla-SLAB180", 11, 2, shear_id["C30"], 0.18, conc, u),
        cpd_wall(3, "CpdWallSteelEla-PLATE-S", 11, 3, shear_id["S355"], 0.012, steel, u),
        cpd_wall(4, "CpdWallConcV-LWALL-FIB", 10, 3, shear_id["C30"], fib_t, conc, u),
    ]
    cpd_wall_id = {"WALL200": 1, "SLAB180": 2, "PLATE-S": 3, "LWALL-FIB": 4}
    general_walls = [
        cpd_gwall(1, "CpdGWallConcH-LWALL-GH", 13, 4, 4, inel_shear_c30, gh_t, conc, u),
        cpd_gwall(2, "CpdGWallConcHV-LWALL-HV", 12, 6, 5, inel_shear_c30, hv_t, conc, u),
    ]
    cpd_gwall_id = {"LWALL-GH": 1, "LWALL-HV": 2}

    # Areas in host order. M1 (membrane), PL1 (plane section) and X5 (five nodes) are not read.
    host_areas = [
        ("W1", "WALL200", ["B1", "A1", "A0", "B0"]),
        ("W2", "LWALL-FIB", ["B0", "C0", "C1", "B1"]),
        ("M1", "MEMB", ["A0", "B0", "B1"]),
        ("W3a", "LWALL-GH", ["A0", "D0", "D1"]),
        ("W3b", "LWALL-GH", ["A0", "D1", "A1"]),
        ("W4", "PLATE-S", ["C0", "E0", "NewNode3", "C1"]),
        ("W5", "LWALL-HV", ["E0", "D0", "D1", "NewNode3"]),
        ("F1", "SLAB180", ["A1", "C1", "NewNode3"]),
        ("F2", "SLAB180", ["A1", "NewNode3", "D1"]),
        ("R1a", "PLATE-S", ["D1", "NewNode3", "E2"]),
        ("R1b", "SLAB180", ["D1", "E2", "D2"]),
        ("L1", "LWALL-FIB", ["D2", "E2", "E3", "D3"]),
        ("P1", "MESH-R", ["D2", "E2", "E4", "D4"]),
        ("PL1", "PLANE", ["D2", "E2", "E3", "D3"]),
        ("X5", "SLAB180", ["A1", "B1", "C1", "NewNode3", "D1"]),
    ]
    areas = read_areas(nodes, host_areas, sections)
    # The new nodes and their names: the first mid-side is not "NewNode3" (a host point),
    # shared mid-sides and F1's centroid (K) and mid-side (B1) take existing nodes.
    new_labels = [n["label"] for n in nodes[len(host_points):]]
    assert new_labels == ["NewNode2", "NewNode4", "NewNode5", "NewNode6",            # W3a
                          "NewNode7", "NewNode9", "NewNode10",                       # W3b
                          "NewNode14", "NewNode15",                                  # F1
                          "NewNode17", "NewNode19",                                  # F2
                          "NewNode22", "NewNode24", "NewNode25",                     # R1a
                          "NewNode27", "NewNode29", "NewNode30"], new_labels         # R1b
    assert len(areas) == 24

    # Frames: four concrete columns (K4 at 90 degrees) and three steel beams.
    frames = [("K1", "C400", "A0", "A1", 0.0), ("K2", "C400", "C0", "C1", 0.0),
              ("K3", "C400", "D0", "D1", 0.0), ("K4", "C400", "E0", "NewNode3", 90.0),
              ("G1", "IPE300", "A1", "B1", 0.0), ("G2", "IPE300", "B1", "C1", 0.0),
              ("G3", "IPE300", "D2", "E2", 0.0)]
    framed = {p for f in frames for p in f[2:4]}

    # Classification and embedded beams. Every area gets its IsEmbed flags; only walls (thin
    # shells standing as walls, layered shells whatever their orientation) get a section. A
    # section with the same t, h, I and material is reused and takes the latest area's
    # position as its label (the label reaches no file).
    embeds, embed_labels = [], []          # (t, h, I, material); label
    for position, area in enumerate(areas, start=1):
        area["orientation"] = area_orientation(area["nodes"])
        area["embed"] = [n["label"] in framed for n in area["nodes"]]
        area["embed_section"] = None
        if not any(area["embed"]):
            continue
        section = area["section"]
        if section in thin and area["orientation"] == 1:
            material, t = thin[section][0], thin[section][1]
        elif section in layered:
            material, t = "C30", layered[section][1]
        else:
            continue
        h = (area["nodes"][2]["z"] - area["nodes"][0]["z"]) / 2
        if h < COINCIDENT:
            h = 0.001
        inertia = (1 / 12) * t * h * h * h
        found = None
        for k, (t2, t3, i33, mat) in enumerate(embeds, start=1):
            if (abs(t2 - t) < COINCIDENT and abs(t3 - h) < COINCIDENT
                    and abs(i33 - inertia) < COINCIDENT and mat == material):
                found = k
                break
        if found is None:
            embeds.append((t, h, inertia, material))
            embed_labels.append(None)
            found = len(embeds)
        embed_labels[found - 1] = str(position)
        area["embed_section"] = found
    # 1: W1 (t 0.2, h 1.5), taken again by W5, a layered wall of the same thickness; 2: W2;
    # 3 and 4: the parts of W3a and W3b by height, 0.75 or 0.25 (in W3a's first part the plan
    # test puts the mid-side at 1.5, not the centroid at 1, in third place); 5: the steel W4;
    # 6: the landing L1 (h 0, floored to 0.001); 7: the parapet P1, of rebar.
    assert [(t, h, mat) for t, h, _, mat in embeds] == [
        (0.2, 1.5, "C30"), (0.25, 1.5, "C30"), (0.3, 0.75, "C30"), (0.3, 0.25, "C30"),
        (0.012, 1.5, "S355"), (0.25, 0.001, "C30"), (0.01, 0.5, "B500")], embeds
    assert embed_labels == ["10", "2", "8", "5", "9", "23", "24"], embed_labels

    # Embedded sections: beam cross sections after the steel and concrete ones, then the
    # "CpdEmbed-" compounds after the plain ones.
    first_embed_beam = len(beams) + 1
    for k, (t, h, inertia, material) in enumerate(embeds, start=1):
        constants = {"area": 0.001, "J": 0.0001, "I22": 0.001, "I33": inertia, "As2": 0.0, "As3": 0.0}
        beams.append(xec_beam(len(beams) + 1, "XecEmbed-%d" % k, 3, 2, constants,
                              materials[material][1], u, depths=(t, h)))
    first_embed_compound = len(compounds) + 1
    for k in range(1, len(embeds) + 1):
        compounds.append(cpd_frame(len(compounds) + 1, "CpdEmbed-%d" % k,
                                   [release_part(1), member_part(3, 2, 3, first_embed_beam + k - 1, 1.0)],
                                   0.0, u))

    # Elements: frame groups, then the area groups in their fixed order.
    members = {name: [] for name in ["ElemConcEWall", "ElemConcWall", "ElemConcGWall",
                                     "ElemSteelWall", "ElemSteelSlab", "ElemConcSlabRamp",
                                     "ElemEmbedBeamLR", "ElemEmbedBeamRL"]}
    for area in areas:
        section = area["section"]
        ids = [n["id"] for n in area["nodes"]]
        crosswise = [ids[0], ids[1], ids[3], ids[2]]
        if section in thin:
            mat_type = materials[thin[section][0]][0]
            if mat_type not in (1, 2):
                continue
            if area["orientation"] == 1:
                group = "ElemConcEWall" if mat_type == 2 else "ElemSteelWall"
                members[group].append((crosswise, 6, 3, 1, cpd_wall_id[section], 0.0))
            else:
                group = "ElemConcSlabRamp" if mat_type == 2 else "ElemSteelSlab"
                members[group].append((crosswise, 3, 8, 1, slab_xsect[section], 0.0))
        elif layered[section][0] == 1:
            group = "ElemConcWall"
            members[group].append((crosswise, 6, 3, 1, cpd_wall_id[section], 0.0))
        else:
            group = "ElemConcGWall"
            members[group].append((crosswise, 6, 4, 1, cpd_gwall_id[section], 0.0))
        area["member_of"] = (group, len(members[group]))
    for area in areas:
        if area["embed_section"] is None:
            continue
        ids, flags = [n["id"] for n in area["nodes"]], area["embed"]
        compound = first_embed_compound + area["embed_section"] - 1
        if flags[0]:
            members["ElemEmbedBeamLR"].append(([ids[1], ids[0]], 6, 2, 1, compound, 0.0))
        if flags[2]:
            members["ElemEmbedBeamLR"].append(([ids[3], ids[2]], 6, 2, 1, compound, 0.0))
        if flags[1]:
            members["ElemEmbedBeamRL"].append(([ids[0], ids[1]], 6, 2, 1, compound, 0.0))
        if flags[3]:
            members["ElemEmbedBeamRL"].append(([ids[2], ids[3]], 6, 2, 1, compound, 0.0))

    def frame_member(frame, compound, option):
        return ([host_ids[frame[2]], host_ids[frame[3]]], 6, 2, option, compound, frame[4])

    area_kinds = {"ElemConcEWall": 6, "ElemConcWall": 6, "ElemConcGWall": 11, "ElemSteelWall": 6,
                  "ElemSteelSlab": 12, "ElemConcSlabRamp": 12, "ElemEmbedBeamLR": 2,
                  "ElemEmbedBeamRL": 2}
    groups_members = [
        ("ElemConcCol", 3, [frame_member(f, cpd_col_c400, 5) for f in frames if f[1] == "C400"]),
        ("ElemSteelBeam", 2, [frame_member(f, cpd_bm_ipe, 1) for f in frames if f[1] == "IPE300"]),
    ] + [(g, area_kinds[g], m) for g, m in members.items() if m]
    groups, elements = mixed_element_groups(groups_members)

    # The source model's frames, areas and nodes for masses, cuts and the drift pair. An area
    # element is its group's leading record plus its place in the group.
    leading, running = {}, 1
    for group_name, _, m in groups_members:
        leading[group_name] = running
        running += len(m) + 1
    for area in areas:
        group_name, k = area.get("member_of", (None, 0))
        area["elem"] = leading[group_name] + k if group_name else 0
        if area["section"] in thin:
            area["material"] = materials[thin[area["section"]][0]][1]
            area["thick"] = thin[area["section"]][1]
        else:
            area["material"], area["thick"] = None, 0.0
            area["layer_material"], area["layer_thick"] = conc, layered[area["section"]][1]
    conc["UnitMass"], steel["UnitMass"] = 2.447, 7.849
    rebar["UnitMass"], rebar["UnitWeight"] = 7.849, 76.97
    sections_of = {"C400": (c400, conc), "IPE300": (ipe, steel)}
    source = plain_source(nodes, areas=areas, gravity=u["gravity"])
    source["frames"] = source_frames(nodes, elements, [
        (label, sections_of[sect][0], sections_of[sect][1], node_i, node_j, elem)
        for (label, sect, node_i, node_j, _), elem in zip(frames, [2, 3, 4, 5, 7, 8, 9])])
    # The four columns stand on supports at I; of the areas, those with both lower nodes on
    # supports: W1, W2, the steel W4 and W5 (the parts of W3a stand on a new mid-side node).
    assert base_cut_members(source)[0] == [(0, 2), (0, 3), (0, 4), (0, 5)]
    assert [a["label"] for a in areas
            if is_support(a["nodes"][0]) and is_support(a["nodes"][1])] == ["W1", "W2", "W4", "W5"]
    # Top D4 (record 17) is nearest in plan to D0 (record 5), 3 m away; E4 above E0 is as
    # near but comes later.
    assert drift_pair(nodes) == (17, 5)

    records = {"FemaBeam": fema_beams, "FemaColumn": fema_columns, "EndZone": [DEFAULT_END_ZONE],
               "Release": [EMBED_BEAM_RELEASE], "MatInel": inelastic, "MatElasticFiber": fibre,
               "MatElasticShear": shear, "MatElasticSlab": slab, "XecBeam": beams,
               "XecColumn": columns, "XecSlab": slabs, "XecWallInel": wall_inel,
               "XecWallElastic": wall_elastic, "CpdFrame": compounds, "CpdWall": walls,
               "CpdGWall": general_walls}
    library = component_library(records, max_count=max_component_count(records))
    node_list = node_records([(n["x"], n["y"], n["z"], n["restrained"], 0) for n in nodes])
    files["TRKDS"] = s_file(name, u, node_list, len(nodes) + 1, len(nodes), 200, library,
                            groups=groups, group_capacity=grown_capacity(len(groups)),
                            elements=elements, element_capacity=grown_capacity(len(elements)),
                            **measured(source, len(nodes) + 1))
    return files


# --- Loads and masses of the source model, and what the measuring steps take from it -----
#
# A source model here is a dict of plain lists, in model order:
#   "nodes"       label, x, y, z, restrained (six booleans), id, and "mass" (six additional
#                 masses; optional);
#   "frames"      the frames that were read: label, "i" and "j" (nodes), "area" (of the
#                 section), "material" (None, or a dict with UnitMass and UnitWeight),
#                 "elem" and "group" (0 when the frame has no element), "mass_per_length"
#                 (optional), "dist" and "point" (load objects of read_frame_loads);
#   "areas"       four-node areas, nodes in normal order: label, "nodes", "material" (the
#                 section's own material, None for a layered shell), "thick",
#                 "layer_material" and "layer_thick" (layered shells), "elem",
#                 "mass_per_area" (optional);
#   "patterns"    load patterns: label, "swm" (self-weight multiplier);
#   "load_nodes"  nodal load objects: label, items of (pattern, six values "f");
#   "mass_source" (option, [(pattern, factor), ...]);
#   "gravity"     the unit block's gravity.
# Masses, load patterns and subgroups follow the source rules step by step; every sum is
# made in the order the rules give.

ZERO = 1e-6


def plain_source(nodes, frames=(), areas=(), gravity=9.81):
    """A source model with no load, no pattern and the default mass source (option 1)."""
    return {"nodes": list(nodes), "frames": list(frames), "areas": list(areas), "patterns": [],
            "load_nodes": [], "mass_source": (1, []), "gravity": gravity}


def first_by_label(items):
    found = {}
    for item in items:
        found.setdefault(item["label"], item)
    return found


def frame_length(frame, projected):
    """Between the end nodes; projected leaves out the Z difference."""
    dx = frame["j"]["x"] - frame["i"]["x"]
    dy = frame["j"]["y"] - frame["i"]["y"]
    dz = 0.0 if projected else frame["j"]["z"] - frame["i"]["z"]
    return math.sqrt(dx * dx + dy * dy + dz * dz)


def quad_area(nodes, projected):
    """Half the length of the cross product of the diagonals node 3 - node 2 and node 4 -
    node 1; projected sets their Z parts to 0."""
    p = [(n["x"], n["y"], 0.0 if projected else n["z"]) for n in nodes]
    a = [p[2][k] - p[1][k] for k in range(3)]
    b = [p[3][k] - p[0][k] for k in range(3)]
    c = (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])
    return math.sqrt(c[0] * c[0] + c[1] * c[1] + c[2] * c[2]) / 2


def area_mass_material(area):
    """The material and thickness that give an area its mass and weight: the section's own,
    or for a layered shell its concrete layer and concrete thickness; None when neither."""
    if area["material"] is not None:
        return area["material"], area["thick"]
    if area.get("layer_material") is not None:
        return area["layer_material"], area["layer_thick"]
    return None, 0.0


def start_masses(nodes):
    for node in nodes:
        for key in ("point_mass", "load_mass", "frame_load_mass", "area_load_mass"):
            node[key] = [0.0] * 6


def add_element_masses(source):
    """Additional masses of nodes (U3 skipped), frames and areas, and the mass of the frame
    and area materials, into PointMass; frames and areas fill U1 and U2 only."""
    for node in source["nodes"]:
        mass = node.get("mass", [0.0] * 6)
        for c in (0, 1, 3, 4, 5):
            node["point_mass"][c] = mass[c]
    for frame in source["frames"]:
        length = frame_length(frame, False)
        per_length = frame.get("mass_per_length", 0.0)
        for c in (0, 1):
            frame["i"]["point_mass"][c] += per_length * length / 2
            frame["j"]["point_mass"][c] += per_length * length / 2
        material = frame["material"]
        if material is not None:
            for c in (0, 1):
                frame["i"]["point_mass"][c] += frame["area"] * material["UnitMass"] * length / 2
                frame["j"]["point_mass"][c] += frame["area"] * material["UnitMass"] * length / 2
    for area in source["areas"]:
        per_area = area.get("mass_per_area", 0.0)
        size = quad_area(area["nodes"], False)
        for node in area["nodes"]:
            for c in (0, 1):
                node["point_mass"][c] += per_area * size / 4
        material, thick = area_mass_material(area)
        if material is None:
            continue
        for node in area["nodes"]:
            for c in (0, 1):
                node["point_mass"][c] += material["UnitMass"] * size * thick / 4


def add_load_masses(source, pattern, factor):
    """The mass that one pattern of the mass source brings, in U1 and U2: nodal loads (F3
    downward is mass), self weight of frames and areas, frame distributed loads as
    simply-supported reactions, frame point loads (not on vertical frames)."""
    g = widened_f32(source["gravity"])
    s = factor
    nodes = first_by_label(source["nodes"])
    for obj in source["load_nodes"]:
        for item in obj["items"]:
            if item["pattern"] == pattern:
                node = nodes[obj["label"]]
                for c in (0, 1):
                    node["load_mass"][c] = node["load_mass"][c] - item["f"][2] * s / g
    carrying = [p for p in source["patterns"] if p["label"] == pattern]
    for frame in source["frames"]:
        material = frame["material"]
        if material is None:
            continue
        length = frame_length(frame, False)
        for p in carrying:
            m = material["UnitWeight"] * p["swm"] * frame["area"] * length * s / g / 2
            for node in (frame["i"], frame["j"]):
                for c in (0, 1):
                    node["frame_load_mass"][c] += m
    for area in source["areas"]:
        size = quad_area(area["nodes"], False)
        material, thick = area_mass_material(area)
        if material is None:
            continue
        for p in carrying:
            m = material["UnitWeight"] * p["swm"] * size * thick * s / g / 4
            for node in area["nodes"]:
                for c in (0, 1):
                    node["area_load_mass"][c] += m
    for frame in source["frames"]:
        length = frame_length(frame, False)
        plan = frame_length(frame, True)
        for obj in frame.get("dist", []):
            if obj["pattern"] != pattern:
                continue
            for a, b, p, q in obj["items"]:
                tri = (b - a) * (q - p) / 2
                rect = (b - a) * p
                ri = (1 - a / 3 - 2 * b / 3) * tri * length + (1 - (a + b) / 2) * rect * length
                rj = tri * (2 * b / 3 + a / 3) * length + rect * (a + b) / 2 * length
                for c in (0, 1):
                    frame["i"]["frame_load_mass"][c] += ri * s / g
                    frame["j"]["frame_load_mass"][c] += rj * s / g
        for obj in frame.get("point", []):
            if obj["pattern"] != pattern:
                continue
            for rd, val in obj["items"]:
                ri, rj = (1 - rd) * val, rd * val
                if plan > ZERO:
                    for c in (0, 1):
                        frame["i"]["frame_load_mass"][c] += ri * s / g
                        frame["j"]["frame_load_mass"][c] += rj * s / g


def settled_f32(value):
    """The value narrowed to f32, checked to be far enough from a rounding boundary that the
    order of the f64 operations before it cannot change the f32."""
    narrowed = widened_f32(value)
    assert widened_f32(value * (1 + 1e-13)) == narrowed == widened_f32(value * (1 - 1e-13)), value
    return narrowed


def f32_sum(total, value):
    """A mass sum in f32. Adding the f64 value to the f32 total and narrowing, or narrowing
    the value first, must give the same f32, so that the expected bytes hold either way."""
    settled_f32(value)
    exact = widened_f32(total + value)
    assert exact == widened_f32(total + widened_f32(value)), (total, value)
    return exact


def nodal_mass_rows(source, node_count):
    """"Nodal Mass" of each node record: the accumulators of the mass source's option, in f32,
    nothing at a restrained degree of freedom, each load accumulator only when positive."""
    nodes = source["nodes"]
    start_masses(nodes)
    option, loads = source["mass_source"]
    if option in (1, 3):
        add_element_masses(source)
    if option in (2, 3):
        for pattern, factor in loads:
            add_load_masses(source, pattern, factor)
    rows = [[0.0] * 6 for _ in range(node_count)]
    for node in nodes:
        row = rows[node["id"] - 1]
        for c in range(6):
            if node["restrained"][c]:
                continue
            if option in (1, 3):
                row[c] = f32_sum(row[c], node["point_mass"][c])
            if option in (2, 3):
                for key in ("load_mass", "frame_load_mass", "area_load_mass"):
                    if node[key][c] > 0:
                        row[c] = f32_sum(row[c], node[key][c])
    return rows


def drift_pair(nodes):
    """The highest and the lowest node nearest to one another in plan, as node numbers, or
    None. Positions count from 1 in model order; the last node can be neither of them."""
    top, bottom = -1000000.0, 10000000.0
    for node in nodes:
        if node["z"] > top:
            top = node["z"]
        if node["z"] < bottom:
            bottom = node["z"]
    tops = [(k, n) for k, n in enumerate(nodes, start=1) if abs(n["z"] - top) < ZERO]
    bottoms = [(k, n) for k, n in enumerate(nodes, start=1) if abs(n["z"] - bottom) < ZERO]
    best, found = 100000000.0, None
    for ka, a in tops:
        for kb, b in bottoms:
            d = (a["y"] - b["y"]) * (a["y"] - b["y"]) + (a["x"] - b["x"]) * (a["x"] - b["x"])
            if d < best:
                best, found = d, (ka, kb)
    if found is None or not found[0] < len(nodes) or found[1] < 1 or not found[1] < len(nodes):
        return None
    return nodes[found[0] - 1]["id"], nodes[found[1] - 1]["id"]


def is_support(node):
    return any(node["restrained"])


def base_cut_members(source):
    """(frames, areas) at the base: a frame with exactly one supported end (end 0 at I, 1 at
    J), an area whose first two nodes are both supported; each (end, element)."""
    frame_cut = []
    for frame in source["frames"]:
        at_i, at_j = is_support(frame["i"]), is_support(frame["j"])
        if at_i != at_j:
            frame_cut.append((0 if at_i else 1, frame["elem"]))
    area_cut = [(0, area["elem"]) for area in source["areas"]
                if is_support(area["nodes"][0]) and is_support(area["nodes"][1])]
    return frame_cut, area_cut


def structure_frame_sets(source, host_groups):
    """A frame for each group but "ALL": node numbers of its points, element numbers of every
    frame and area that carries the label of one of its frames or areas (0 for an object
    without element); other object types are lost."""
    nodes = first_by_label(source["nodes"])
    sets = []
    for name, assignments in host_groups:
        if name == "ALL":
            continue
        node_ids, elem_ids = set(), set()
        for kind, label in assignments:
            if kind == 1:
                node_ids.add(nodes[label]["id"])
            elif kind == 2:
                elem_ids.update(f["elem"] for f in source["frames"] if f["label"] == label)
            elif kind == 5:
                elem_ids.update(a["elem"] for a in source["areas"] if a["label"] == label)
        sets.append((name, node_ids, elem_ids))
    return sets


def source_nodes(points):
    """Node dicts of points (label, x, y, z, restraints) in model order; point k (from 0) is
    node record k + 2."""
    return [{"label": label, "x": x, "y": y, "z": z, "restrained": list(r), "id": k + 2}
            for k, (label, x, y, z, r) in enumerate(points)]


def source_frames(nodes, elements, frames):
    """Frame dicts of (label, section constants, material or None, node I, node J, element)
    in model order; each element record must join the frame's two nodes."""
    by_label = first_by_label(nodes)
    made = []
    for label, section, material, node_i, node_j, elem in frames:
        frame = {"label": label, "i": by_label[node_i], "j": by_label[node_j],
                 "area": section["area"], "material": material, "elem": elem, "group": 0,
                 "dist": [], "point": []}
        if elem:
            assert elements[elem - 1][6:14] == i32(frame["i"]["id"]) + i32(frame["j"]["id"]), label
        made.append(frame)
    return made


def measured(source, node_count, host_groups=(), group_count=0):
    """The keyword arguments of s_file for what the mass, load, frame, cut and drift steps
    make of a source model whose loads have been read."""
    mark_load_pattern_contents(source)
    rows = nodal_mass_rows(source, node_count)
    return {"mass_rows": rows, "node_patterns": node_load_patterns(source, rows),
            "frame_loads": frame_load_patterns(source, group_count),
            "self_weight": self_weight_patterns(source), "cuts": base_cut_members(source),
            "drift": drift_pair(source["nodes"]),
            "frame_sets": structure_frame_sets(source, host_groups)}


# Reading the loads: patterns, nodal loads, frame loads, area loads spread to the nodes.

def trimmed(csys):
    return csys.strip(" ")


def set_load_node(obj, label, pattern, values):
    """Adds the six values to the object's item of the pattern, or opens that item."""
    for item in obj["items"]:
        if item["pattern"] == pattern:
            item["f"] = [a + b for a, b in zip(item["f"], values)]
            return
    obj["label"] = label
    obj["items"].append({"pattern": pattern, "f": list(values)})


def new_load_node(source):
    obj = {"label": None, "items": []}
    source["load_nodes"].append(obj)
    return obj


def read_load_nodes(source, host_forces):
    """host_forces: node label -> [(pattern, csys, six values)]. One object for each node
    with a force in "GLOBAL"; others are dropped."""
    for node in source["nodes"]:
        kept = [f for f in host_forces.get(node["label"], []) if trimmed(f[1]) == "GLOBAL"]
        if not kept:
            continue
        obj = new_load_node(source)
        for pattern, _, values in kept:
            set_load_node(obj, node["label"], pattern, values)


def interpolate(x, x1, y1, x2, y2):
    if x1 == x2:
        return 0.0
    if x1 > x2:
        x1, y1, x2, y2 = x2, y2, x1, y1
    if x < x1 or x > x2:
        return 0.0
    return y1 + (x - x1) * (y2 - y1) / (x2 - x1)


def add_pair(pairs, d1, left1, right1, d2, left2, right2):
    """Superposes one piece on the stations (dist, ValLeft, ValRight) of a frame."""
    if not pairs:
        pairs.extend([[0.0, 0.0, 0.0], [1.0, 0.0, 0.0]])

    def locate(d, left, right):
        for i in range(len(pairs)):
            if abs(pairs[i][0] - d) < ZERO:
                return i, None
            if i + 1 < len(pairs) and pairs[i][0] + ZERO < d and pairs[i + 1][0] - ZERO > d:
                b = interpolate(d, pairs[i][0], pairs[i][2], pairs[i + 1][0], pairs[i + 1][1])
                return i + 1, [d, b + left, b + right]
        raise AssertionError("a distance outside the frame: %r" % d)

    place1, new1 = locate(d1, left1, right1)
    place2, new2 = locate(d2, left2, right2)
    for station in pairs:
        if d1 + ZERO < station[0] < d2 - ZERO:
            v = right1 + (station[0] - d1) * (left2 - right1) / (d2 - d1)
            station[1] += v
            station[2] += v
    if new1 is None:
        pairs[place1][1] += left1
        pairs[place1][2] += right1
    if new2 is None:
        pairs[place2][1] += left2
        pairs[place2][2] += right2
    if new2 is not None:
        pairs.insert(place2, new2)
    if new1 is not None:
        pairs.insert(place1, new1)


def sort_load_frame_distributed(obj, units):
    """Rewrites the pieces of one pattern as sorted trapezoids that do not overlap, merging
    neighbours that continue one another."""
    pairs = []
    for rd1, rd2, val1, val2 in obj["items"]:
        add_pair(pairs, rd1, 0.0, val1, rd2, val2, 0.0)
    tolerance = widened_f32(INCHES_PER_UNIT[2]) * 1e-6 / widened_f32(INCHES_PER_UNIT[units["length"]])
    items = []
    for s in range(len(pairs) - 1):
        r, l = pairs[s][2], pairs[s + 1][1]
        if abs(r) <= ZERO and abs(l) <= ZERO:
            continue
        if tolerance >= abs(pairs[s + 1][0] - pairs[s][0]):
            continue
        items.append([pairs[s][0], pairs[s + 1][0], r, l])
    for k in range(len(items) - 1, 0, -1):
        a, b = items[k - 1], items[k]
        if (abs(a[1] - b[0]) < ZERO and abs(a[3] - b[2]) < ZERO and abs(a[1] - a[0]) > ZERO
                and abs(b[1] - b[0]) > ZERO
                and abs((a[3] - a[2]) / (a[1] - a[0]) - (b[3] - b[2]) / (b[1] - b[0])) < ZERO):
            a[1], a[3] = b[1], b[3]
            del items[k]
    obj["items"] = [tuple(item) for item in items]


def sort_load_frame_point(obj):
    """Selection sort with fixed bounds that folds loads at one distance into the first; a
    removal leaves the old last item behind the count, and the fixed bound reads it."""
    n = len(obj["items"])
    slots = [list(item) for item in obj["items"]]
    count = n
    for i in range(n - 1):
        for j in range(i + 1, n):
            if abs(slots[i][0] - slots[j][0]) >= ZERO:
                if slots[i][0] > slots[j][0]:
                    slots[i], slots[j] = slots[j], slots[i]
            else:
                slots[i][1] += slots[j][1]
                for m in range(j, count - 1):
                    slots[m] = list(slots[m + 1])
                count -= 1
    obj["items"] = [tuple(item) for item in slots[:count]]


def read_frame_loads(source, host_dist, host_point, units):
    """host_dist: frame label -> [(pattern, type, csys, dir, rd1, rd2, val1, val2)];
    host_point: frame label -> [(pattern, type, csys, dir, rd, val)]. Forces in "GLOBAL"
    along 6, 9 (upward, negated) and 10, 11 (gravity) are kept, positive downward. A
    distributed load of no length is a point load. All distributed loads of all frames are
    read before the point loads; then the end point loads move to the end nodes."""
    def accepted(kind, csys, direction):
        return kind == 1 and trimmed(csys) == "GLOBAL" and direction in (6, 9, 10, 11)

    def point_object(frame, pattern):
        for obj in frame["point"]:
            if obj["pattern"] == pattern:
                return obj
        obj = {"pattern": pattern, "items": []}
        frame["point"].append(obj)
        return obj

    for frame in source["frames"]:
        frame["dist"], frame["point"] = [], []
        for pattern, kind, csys, direction, rd1, rd2, val1, val2 in host_dist.get(frame["label"], []):
            if not accepted(kind, csys, direction):
                continue
            sign = -1.0 if direction in (6, 9) else 1.0
            if abs(rd1 - rd2) >= ZERO:
                obj = next((o for o in frame["dist"]
                            if o["pattern"] == pattern and o["csys"] == csys), None)
                if obj is None:
                    obj = {"pattern": pattern, "csys": csys, "items": []}
                    frame["dist"].append(obj)
                obj["items"].append((rd1, rd2, sign * val1, sign * val2))
            else:
                point_object(frame, pattern)["items"].append((rd1, sign * val1))
        for obj in frame["dist"]:
            sort_load_frame_distributed(obj, units)
    for frame in source["frames"]:
        for pattern, kind, csys, direction, rd, val in host_point.get(frame["label"], []):
            if not accepted(kind, csys, direction):
                continue
            sign = -1.0 if direction in (6, 9) else 1.0
            point_object(frame, pattern)["items"].append((rd, sign * val))
        for obj in frame["point"]:
            sort_load_frame_point(obj)
    for frame in source["frames"]:
        for obj in frame["point"]:
            # The value goes into F3 with its downward sign, as the end load rule keeps it.
            if obj["items"] and obj["items"][0][0] < ZERO:
                set_load_node(new_load_node(source), frame["i"]["label"], obj["pattern"],
                              [0.0, 0.0, obj["items"][0][1], 0.0, 0.0, 0.0])
                obj["items"].pop(0)
            if obj["items"] and abs(obj["items"][-1][0] - 1) < ZERO:
                set_load_node(new_load_node(source), frame["j"]["label"], obj["pattern"],
                              [0.0, 0.0, obj["items"][-1][1], 0.0, 0.0, 0.0])
                obj["items"].pop()


def value_text(value):
    """An area load value is kept as its decimal text of 15 significant digits."""
    return "%.15g" % value


def read_area_loads(source, host_uniform, host_to_frame):
    """host_uniform, host_to_frame: area label -> [(pattern, csys, dir, value)]. Two passes
    over the areas (each part of a divided triangle reads the triangle's loads); an area with
    one item in another system or direction loses all its items of that pass. The values,
    positive along +Z, are then spread as a quarter of value times area on each node."""
    load_areas = []
    for host in (host_uniform, host_to_frame):
        for area in source["areas"]:
            items = host.get(area["label"], [])
            if not items or any(trimmed(csys) != "GLOBAL" or direction not in (6, 9, 10, 11)
                                for _, csys, direction, _ in items):
                continue
            obj = {"label": area["label"], "items": []}
            load_areas.append(obj)
            for pattern, _, direction, value in items:
                upward = direction in (6, 9)
                for item in obj["items"]:
                    if item["pattern"] == pattern:
                        stored = float(item["value"])
                        item["value"] = value_text(stored + value if upward else stored - value)
                        break
                else:
                    obj["items"].append({"pattern": pattern, "dir": direction,
                                         "value": value_text(value if upward else -value)})
    for obj in load_areas:
        for area in source["areas"]:
            if area["label"] != obj["label"]:
                continue
            size = quad_area(area["nodes"], False)
            projected = quad_area(area["nodes"], True)
            for item in obj["items"]:
                if item["dir"] in (9, 11):
                    size = projected
                force = float(item["value"]) * size / 4.0
                for node in area["nodes"]:
                    target = next((o for o in source["load_nodes"] if o["label"] == node["label"]),
                                  None) or new_load_node(source)
                    set_load_node(target, node["label"], item["pattern"],
                                  [0.0, 0.0, force, 0.0, 0.0, 0.0])


def mark_load_pattern_contents(source):
    """Which patterns hold nodal loads, frame loads and self weight."""
    for p in source["patterns"]:
        p["node_loads"] = any(item["pattern"] == p["label"] and any(abs(v) > ZERO for v in item["f"])
                              for obj in source["load_nodes"] for item in obj["items"])
        p["frame_loads"] = any(
            any(o["pattern"] == p["label"] and any(abs(it[2]) > ZERO or abs(it[3]) > ZERO
                                                   for it in o["items"]) for o in f["dist"])
            or any(o["pattern"] == p["label"] and any(abs(it[1]) > ZERO for it in o["items"])
                   for o in f["point"])
            for f in source["frames"])
        weighs = (any(f["material"] is not None and f["material"]["UnitWeight"] > ZERO
                      for f in source["frames"])
                  or any(area_mass_material(a)[0] is not None
                         and area_mass_material(a)[0]["UnitWeight"] > ZERO
                         for a in source["areas"]))
        p["self_weight"] = p["swm"] >= ZERO and weighs


def node_load_patterns(source, mass_rows):
    """"LoadNode-" patterns of the patterns with nodal loads (the later object of a node
    stands), then "AccelUX" and "AccelUY"."""
    ids = {label: node["id"] for label, node in first_by_label(source["nodes"]).items()}
    patterns = []
    for i, p in enumerate(source["patterns"], start=1):
        if not p["node_loads"]:
            continue
        loads = {}
        for obj in source["load_nodes"]:
            for item in obj["items"]:
                if item["pattern"] == p["label"] and ids.get(obj["label"], -1) != -1:
                    loads[ids[obj["label"]]] = list(item["f"])
        patterns.append((name_with_suffix("LoadNode-", p["label"], i), -3, loads))
    return patterns + accel_patterns(mass_rows)


def within(a, b):
    return abs(a - b) <= ZERO


def frame_load_patterns(source, group_count):
    """"LoadFrame-" patterns: in each element group the frames with the same items (each
    value within 1e-6, a difference of exactly 1e-6 included) share a subgroup, which keeps
    the first frame's items. Only the first distributed and point object of a pattern count."""
    patterns = []
    for i, p in enumerate(source["patterns"], start=1):
        if not p["frame_loads"]:
            continue
        groups = {}
        for g in range(1, group_count + 1):
            subs = []
            for frame in source["frames"]:
                if frame["group"] != g:
                    continue
                dist = next((o["items"] for o in frame["dist"] if o["pattern"] == p["label"]), [])
                point = next((o["items"] for o in frame["point"] if o["pattern"] == p["label"]), [])
                if not dist and not point:
                    continue
                for sub in subs:
                    if (len(sub["dist"]) == len(dist) and len(sub["point"]) == len(point)
                            and all(all(within(x, y) for x, y in zip(a, b))
                                    for a, b in zip(sub["dist"], dist))
                            and all(all(within(x, y) for x, y in zip(a, b))
                                    for a, b in zip(sub["point"], point))):
                        sub["elems"].append(frame["elem"])
                        break
                else:
                    subs.append({"elems": [frame["elem"]], "dist": list(dist), "point": list(point)})
            if subs:
                groups[g] = subs
        patterns.append((name_with_suffix("LoadFrame-", p["label"], i), groups))
    return patterns


def self_weight_patterns(source):
    """"SelfWeight-" patterns; an element takes its weight when the multiplier is above
    0.001."""
    patterns = []
    for i, p in enumerate(source["patterns"], start=1):
        if not p["self_weight"]:
            continue
        flagged = set()
        if p["swm"] > 0.001:
            flagged.update(f["elem"] for f in source["frames"] if f["elem"] >= 1)
            flagged.update(a["elem"] for a in source["areas"] if a["elem"] >= 1)
        patterns.append((name_with_suffix("SelfWeight-", p["label"], i), flagged))
    return patterns


def loads():
    """A small loaded building in kilonewton and metre (see model.json): concrete columns
    (one standing on its J end) and a concrete beam, steel column, beams and brace, a
    supported ground slab, a floor slab and a floor triangle. Nodal loads (one in a local
    system), distributed loads (adjoining pieces that merge, overlapping uniform and
    trapezoidal pieces, one of no length that becomes a point load), point loads (one at the
    I end, two at one place), area loads (one area with a second load in a local system),
    self weight in two patterns, a pattern of 31 characters, beams that share a load
    subgroup and one that differs by 1e-5, groups, and a mass source of both kinds with two
    patterns. The loads, patterns and groups are read from model.json as the host gives
    them; everything else follows the rules step by step."""
    import json
    name = "loads"
    with open(os.path.join(HERE, name, "model.json"), encoding="utf-8") as f:
        host = json.load(f)
    files = empty_files(name)
    u = UNITS_KN_M

    # Materials as read: C30, S355, B500 (uniaxial); the library is that of walls-slabs for
    # the same materials and frame sections, with one thin concrete shell section.
    conc = {"E": 3e7, "Nu": 0.2, "G": 1.25e7, "Fu": 30000.0, "ConcFc": 30000.0, "UnitWeight": 24.0,
            "UnitMass": 2.447}
    steel = {"E": 2e8, "Nu": 0.3, "G": 76923077.0, "Fu": 490000.0, "UnitWeight": 76.97,
             "UnitMass": 7.849}
    inelastic = [
        mat_inel(1, "MatIneFibRebar-B500", 0, 2e8, 550000.0, 605000.0, 0.0, 0.2, u),
        mat_inel(2, "MatIneFibConc-C30", 1, 3e7, 0.9 * 30000.0, 30000.0, 0.04, 0.02, u),
        mat_inel(3, "MatIneShearConc-C30", 2, 1.25e7, 0.0, 30000.0 / 2, 0.0, 2.0, u),
    ]
    fibre = [mat_fiber(1, "MatElaFiberConc-C30", 3e7, u), mat_fiber(2, "MatElaFiberSteel-S355", 2e8, u)]
    shear = [mat_shear(1, "MatElaShearConc-C30", 1.25e7, u),
             mat_shear(2, "MatElaShearSteel-S355", 76923077.0, u)]
    slab = [mat_slab(1, "MatElaSlabConc-C30", 3e7, 0.2, u), mat_slab(2, "MatElaSlabSteel-S355", 2e8, 0.3, u)]
    inel_c30, rebar_fibre, fibre_c30, shear_c30, slab_c30 = 2, 1, 1, 1, 1
    c400 = {"area": 0.16, "As2": 0.1333, "As3": 0.1333, "J": 0.0036, "I22": 0.002133, "I33": 0.002133}
    ipe = {"area": 0.005381, "As2": 0.002568, "As3": 0.00321, "J": 2.01e-7, "I22": 6.04e-6,
           "I33": 8.356e-5}
    beams, columns, fema_beams, fema_columns = section_components([(2, "IPE300", ipe, 1)],
                                                                  [(1, "C400", c400, 2)], steel, conc, u)
    compounds = plain_compounds([(2, "IPE300", ipe, 1)], [(1, "C400", c400, 2)], steel, conc, u)
    cpd_bm_ipe, cpd_col_ipe, cpd_bm_c400, cpd_col_c400 = 1, 3, 5, 7
    records = {"FemaBeam": fema_beams, "FemaColumn": fema_columns, "EndZone": [DEFAULT_END_ZONE],
               "Release": [EMBED_BEAM_RELEASE], "MatInel": inelastic, "MatElasticFiber": fibre,
               "MatElasticShear": shear, "MatElasticSlab": slab, "XecBeam": beams,
               "XecColumn": columns,
               "XecSlab": [xec_slab(1, "XecElaSlabC-SLAB200", 0.2, 0.2, conc, slab_c30, u)],
               "XecWallInel": [xec_wall_inel(1, "Notused-XSecWallCIne-SLAB200", 10, 0.2, 0.2, 0.4,
                                             conc, inel_c30, rebar_fibre, u)],
               "XecWallElastic": [xec_wall_elastic(1, "XecWallElaC-SLAB200", 11, 0.2, 0.2, conc,
                                                   fibre_c30, u)],
               "CpdFrame": compounds,
               "CpdWall": [cpd_wall(1, "CpdWallConcEla-SLAB200", 11, 1, shear_c30, 0.2, conc, u)]}
    library = component_library(records, max_count=max_component_count(records))

    # Nodes, then the floor triangle T1 divided on four new nodes (NewNode2 to NewNode5).
    nodes = source_nodes([(pt["name"], float(pt["x"]), float(pt["y"]), float(pt["z"]),
                           pt.get("restraints", [False] * 6)) for pt in host["points"]])
    for node, pt in zip(nodes, host["points"]):
        node["mass"] = [float(v) for v in pt.get("mass", [0] * 6)]
    areas = read_areas(nodes, [(a["name"], a["section"], a["points"]) for a in host["areas"]],
                       ["SLAB200"])
    assert [n["label"] for n in nodes[10:]] == ["NewNode2", "NewNode3", "NewNode4", "NewNode5"]
    assert [a["label"] for a in areas] == ["S0", "S1", "T1", "T1", "T1"]
    assert all(area_orientation(a["nodes"]) == 2 for a in areas)
    ids = {n["label"]: n["id"] for n in nodes}

    # Frames by their groups: concrete columns, concrete beam, steel column, steel beams and
    # the steel brace (which takes the column compound); then the slabs, nodes crosswise.
    host_frames = {f["name"]: f for f in host["frames"]}
    frame_groups = [("ElemConcCol", 3, 5, cpd_col_c400, ["K1", "K2"]),
                    ("ElemConcBeam", 2, 1, cpd_bm_c400, ["G1"]),
                    ("ElemSteelCol", 3, 5, cpd_col_ipe, ["K3"]),
                    ("ElemSteelBeam", 2, 1, cpd_bm_ipe, ["G2", "G3", "G4", "G5"]),
                    ("ElemSteelBrace", 5, 1, cpd_col_ipe, ["BR1"])]
    groups_members = [(group_name, kind, [([ids[host_frames[f]["i"]], ids[host_frames[f]["j"]]],
                                           6, 2, option, compound, 0.0) for f in labels])
                      for group_name, kind, option, compound, labels in frame_groups]
    groups_members.append(("ElemConcSlabRamp", 12, [
        ([n["id"] for n in (a["nodes"][0], a["nodes"][1], a["nodes"][3], a["nodes"][2])],
         3, 8, 1, 1, 0.0) for a in areas]))
    groups, elements = mixed_element_groups(groups_members)
    assert len(elements) == 20
    elem_of = {"K1": 2, "K2": 3, "G1": 5, "K3": 7, "G2": 9, "G3": 10, "G4": 11, "G5": 12, "BR1": 14}
    group_of = {"K1": 1, "K2": 1, "G1": 2, "K3": 3, "G2": 4, "G3": 4, "G4": 4, "G5": 4, "BR1": 5}
    per_area = {a["name"]: float(a.get("mass_per_area", 0.0)) for a in host["areas"]}
    for area, elem in zip(areas, range(16, 21)):
        area.update({"elem": elem, "material": conc, "thick": 0.2,
                     "mass_per_area": per_area[area["label"]]})

    # The source model, its loads read as the host gives them.
    source = plain_source(nodes, areas=areas, gravity=u["gravity"])
    sections_of = {"C400": (c400, conc), "IPE300": (ipe, steel)}
    source["frames"] = source_frames(nodes, elements, [
        (f["name"], sections_of[f["section"]][0], sections_of[f["section"]][1], f["i"], f["j"],
         elem_of[f["name"]]) for f in host["frames"]])
    for frame, f in zip(source["frames"], host["frames"]):
        frame["group"] = group_of[f["name"]]
        frame["mass_per_length"] = float(f.get("mass_per_length", 0.0))
    source["patterns"] = [{"label": p["name"], "swm": float(p.get("self_weight_multiplier", 0.0))}
                          for p in host["load_patterns"]]
    source["mass_source"] = (host["mass_source"]["option"],
                             [(m["pattern"], float(m["factor"])) for m in host["mass_source"]["loads"]])
    read_load_nodes(source, {pt["name"]: [(fc["pattern"], fc.get("csys", "GLOBAL"),
                                           [float(v) for v in fc["values"]])
                                          for fc in pt.get("forces", [])]
                             for pt in host["points"]})
    read_frame_loads(
        source,
        {f["name"]: [(d["pattern"], d.get("type", 1), d.get("csys", "GLOBAL"), d["dir"],
                      float(d["rd1"]), float(d["rd2"]), float(d["val1"]), float(d["val2"]))
                     for d in f.get("distributed_loads", [])] for f in host["frames"]},
        {f["name"]: [(d["pattern"], d.get("type", 1), d.get("csys", "GLOBAL"), d["dir"],
                      float(d["rd"]), float(d["val"])) for d in f.get("point_loads", [])]
         for f in host["frames"]}, u)

    def area_items(key):
        return {a["name"]: [(d["pattern"], d.get("csys", "GLOBAL"), d["dir"], float(d["value"]))
                            for d in a.get(key, [])] for a in host["areas"]}

    read_area_loads(source, area_items("uniform_loads"), area_items("uniform_to_frame_loads"))

    # What the reading made, worked by hand: G1's two pieces of 8 merge into one; G2's
    # uniform 4 on 0 to 0.75 and 2 to 6 on 0.5 to 1 give three trapezoids; the load of no
    # length on G1 and the point loads on G2 (12 at the I end, 3 and 4.5 at the middle).
    frames = {f["label"]: f for f in source["frames"]}
    assert frames["G1"]["dist"][0]["items"] == [(0.0, 1.0, 8.0, 8.0)]
    assert frames["G1"]["point"][0]["items"] == [(0.4, 9.0)]
    assert frames["G2"]["dist"][0]["items"] == [(0.0, 0.5, 4.0, 4.0), (0.5, 0.75, 6.0, 8.0),
                                                (0.75, 1.0, 4.0, 6.0)]
    assert frames["G2"]["point"][0]["items"] == [(0.5, 7.5)]
    assert frames["G3"]["dist"][0]["items"] == [(0.0, 1.0, 5.0, 5.0)]
    # Nodal load objects: the nodes' own (D1's local load dropped), the end load of G2 on
    # B1 with its downward sign (a second object of B1), then A1's first from the slab.
    assert [o["label"] for o in source["load_nodes"]][:6] == ["B1", "C1", "D1", "E1", "B1", "A1"]
    b1_end = source["load_nodes"][4]["items"]
    assert [(it["pattern"], it["f"]) for it in b1_end] == [("LIVE", [0, 0, 12.0, 0, 0, 0])]
    # The slab S0 has a LIVE load in "Local": it loses both. S1 spreads 2.5 x 20 / 4 = 12.5
    # downward on each corner in DEAD, and T1 its -2 and 0.7 (one item, -2.7) three times
    # over, since each of its three parts (10/3 each) reads the triangle's loads: 2.25 on
    # each node of a part, each time.
    assert not [o for o in source["load_nodes"] if o["label"] in ("A0", "B0", "F0", "H0")]
    dead = {o["label"]: it["f"][2] for o in source["load_nodes"] for it in o["items"]
            if it["pattern"] == "DEAD"}
    for label, f3 in [("A1", -12.5), ("B1", -12.5 - 3 * 2.25), ("C1", 20 - 3 * 2.25),
                      ("D1", -12 - 12.5), ("NewNode2", -3 * 3 * 2.25), ("NewNode3", -2 * 3 * 2.25)]:
        assert abs(dead[label] - f3) < 1e-9, (label, dead[label])

    host_groups = [(g["name"], [(a["type"], a["name"]) for a in g.get("assignments", [])])
                   for g in host.get("groups", [])]
    extras = measured(source, len(nodes) + 1, host_groups, len(groups))
    patterns = {p["label"]: p for p in source["patterns"]}
    assert [p["label"] for p in source["patterns"] if p["node_loads"]] == [
        "DEAD", "LIVE", "SUPERIMPOSED-DEAD-ON-ALL-FLOORS"]
    assert not patterns["WIND"]["frame_loads"] and not patterns["WIND"]["self_weight"]
    assert [n for n, _, _ in extras["node_patterns"]] == [
        "LoadNode-DEAD", "LoadNode-LIVE", "LoadNode-SUPERIMPOSED-DEAD-ON-ALL-FLOORS", "AccelUX",
        "AccelUY"]
    # B1 in LIVE: the later object (the end load, F3 +12) stands over the first (F2 2 and
    # the slab's -7.5).
    assert extras["node_patterns"][1][2][ids["B1"]] == [0.0, 0.0, 12.0, 0.0, 0.0, 0.0]
    assert [n for n, _ in extras["frame_loads"]] == ["LoadFrame-DEAD", "LoadFrame-LIVE",
                                                     "LoadFrame-5"]
    dead_beams = extras["frame_loads"][0][1][4]
    assert [sub["elems"] for sub in dead_beams] == [[9], [10, 11], [12]]
    assert [(n, sorted(f)) for n, f in extras["self_weight"]] == [
        ("SelfWeight-DEAD", [2, 3, 5, 7, 9, 10, 11, 12, 14, 16, 17, 18, 19, 20]),
        ("SelfWeight-5", [])]
    # Base cuts: K1 and K3 at I, K2 at J (it stands on B0 by its J end), the brace BR1; the
    # ground slab S0 on four supports.
    assert extras["cuts"] == ([(0, 2), (1, 3), (0, 7), (0, 14)], [(0, 16)])
    assert extras["drift"] == (ids["A1"], ids["A0"])
    assert [(n, sorted(ns), sorted(es)) for n, ns, es in extras["frame_sets"]] == [
        ("FLOOR-1", [7, 8, 9], [5, 9, 18, 19, 20]),
        ("COLUMNS-AND-BRACES-OF-GRID", [], [2, 3, 7, 14]), ("all", [], [])]
    # E1: U1 holds its additional 2 and more; U3 stays 0 (never read); R3 holds 1. The
    # Y pattern of acceleration takes U1.
    e1 = extras["mass_rows"][ids["E1"] - 1]
    assert e1[2] == 0.0 and e1[5] == 1.0 and e1[0] != e1[1]
    assert extras["node_patterns"][4][2][ids["E1"]][1] == e1[0]
    # A1, term by term (g = 9.81 in f32): material and additional mass of K1, G1 (0.5 a
    # metre), G3 and S1 (0.1 a square metre); the DEAD nodal load 12.5 and half the LIVE 7.5;
    # DEAD self weight of K1, G1, G3; reactions of G1 (20), G3 (10 and 5 from its point
    # load) and half the LIVE point load of G1 (0.6 x 9); the slab's self weight.
    g = widened_f32(9.81)
    a1 = (0.16 * 2.447 * 1.5 + 1.25 + 0.16 * 2.447 * 2.5 + 0.005381 * 7.849 * 2 + 0.5 + 2.447
          + (12.5 + 0.5 * 7.5) / g
          + (24 * 0.16 * 1.5 + 24 * 0.16 * 2.5 + 76.97 * 0.005381 * 2) / g
          + (20 + 10 + 5 + 0.5 * 5.4) / g + 24 * 20 * 0.2 / 4 / g)
    assert abs(extras["mass_rows"][ids["A1"] - 1][0] - a1) < 1e-5, a1
    # C1: its upward DEAD load makes a negative load mass, which is left out.
    c1 = next(n for n in nodes if n["label"] == "C1")
    assert c1["load_mass"][0] < 0 < c1["frame_load_mass"][0]

    node_list = node_records([(n["x"], n["y"], n["z"], n["restrained"], 0) for n in nodes])
    files["TRKDS"] = s_file(name, u, node_list, len(nodes) + 1, len(nodes), 200, library,
                            groups=groups, group_capacity=grown_capacity(len(groups)),
                            elements=elements, element_capacity=grown_capacity(len(elements)),
                            **extras)
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
    write("frames", frames())
    write("frames-kn", frames_kn())
    write("sections", sections())
    write("walls-slabs", walls_slabs())
    write("loads", loads())
