#!/usr/bin/env python3
"""Builds the expected structure folders and earthquake record files of the golden models
with load cases, groups and base cuts, from the published record layouts, field by field
and independently of the program. It uses the structure-file builders of make_expected.py
(same folder) and adds the load case file, the analysis series entry, the time-history
functions and their record files. Run it when a layout decision changes, read the diff of
the expected files, and commit both.

    python3 tests/models/make_expected_cases.py
"""
import json
import math
import os
import re
import shutil

import make_expected as mx
from make_expected import f32, i16, placed, text, zeros

HERE = mx.HERE

# --- Time-history functions and their record files ---------------------------------------

RECORDS_SUBFOLDER = "EqkeGroup"
RECORD_TITLE = "EarthquakeRecord: "
TWO_PI = 6.2831852          # the generators' own constant, not 2 pi
ZERO = 1e-6


def widened(value):
    return mx.widened_f32(value)


def record_file(name, points):
    """One earthquake record: title, version 1, the count of pairs, the peak (first of the
    largest magnitude in f32, sign kept; 0 at 0 when every value is 0), the duration (the
    largest time, or 1.0 when below 0), then (0, 0) and the function's points, all in f32."""
    peak_value, peak_time, largest = 0.0, 0.0, 0.0
    for t, v in points:
        if abs(widened(v)) > largest:
            largest, peak_value, peak_time = abs(widened(v)), v, t
    tmax = -100000.0
    for t, _ in points:
        if t > tmax:
            tmax = t
    if tmax < 0:
        tmax = 1.0
    out = text(RECORD_TITLE + name, 40) + i16(1) + i16(len(points) + 1)
    out += f32(peak_value) + f32(peak_time) + f32(tmax)
    out += f32(0.0) + f32(0.0)
    for t, v in points:
        out += f32(t) + f32(v)
    assert len(out) == 56 + 8 * (len(points) + 1)
    return out


def wave_points(kind, period, steps, cycles, amplitude):
    """Sine (kind 2) from (0, 0), cosine (kind 3) from (0, amplitude): one point at each step
    of each cycle, a wave value under 1e-6 in magnitude taken as 0."""
    points = [(0.0, 0.0 if kind == 2 else amplitude)]
    for c in range(cycles):
        for s in range(1, steps + 1):
            f = s / steps
            w = math.sin(TWO_PI * f) if kind == 2 else math.cos(TWO_PI * f)
            if abs(w) < ZERO:
                w = 0.0
            points.append(((c + f) * period, w * amplitude))
    return points


def ramp_points(time, amplitude, max_time):
    if not max_time > time:
        max_time = 20 * time
    return [(0.0, 0.0), (time, amplitude), (max_time, amplitude)]


def triangular_points(period, cycles, amplitude):
    points = [(0.0, 0.0)]
    for c in range(cycles):
        points += [((c + 0.25) * period, amplitude), ((c + 0.5) * period, 0.0),
                   ((c + 0.75) * period, -amplitude), ((c + 1) * period, 0.0)]
    return points


def sawtooth_points(period, ramp_time, cycles, amplitude):
    r = ramp_time / period
    if r > 0.25:
        r = 0.2499
    points = [(0.0, 0.0)]
    for c in range(cycles):
        points += [((c + r) * period, amplitude), ((c + 0.5 - r) * period, amplitude),
                   ((c + 0.5) * period, 0.0), ((c + 0.5 + r) * period, -amplitude),
                   ((c + 1 - r) * period, -amplitude), ((c + 1) * period, 0.0)]
    return points


NUMBER = re.compile(r"[+-]?(\d+(\.\d+)?|\.\d+)([eEdD][+-]?\d+)?")
TWO_POINTS = [(0.0, 0.0), (1.0, 0.0)]


def field_value(field):
    """A field that is a decimal number (with an optional exponent of e, E, d or D) gives its
    value; anything else gives 0."""
    if NUMBER.fullmatch(field) is None:
        return 0.0
    return float(field.replace("d", "e").replace("D", "e"))


def read_record_text(path, header_lines, prefix_chars, per_line, value_type, free_format,
                     field_width, dt):
    """The points of a record text file: lines end at CR LF, CR or LF; the header lines are
    skipped; then a line starting with "$" is a comment; the prefix characters are dropped
    and spaces trimmed; an empty line ends the reading. Free format: cut at the first "$",
    split at runs of blanks and tabs. Fixed format: fields of the fixed width. Each line
    gives per_line points (time and value pairs for value type 2, values at steps of dt for
    value type 1). A missing file, no points, a negative first time or times that do not
    rise strictly give the two points (0, 0) and (1, 0)."""
    try:
        with open(path, "rb") as stream:
            content = stream.read().decode("latin-1")
    except OSError:
        return list(TWO_POINTS)
    lines = re.split(r"\r\n|\r|\n", content)
    times, values = [], []
    for number, line in enumerate(lines, start=1):
        if number <= header_lines:
            continue
        if line.startswith("$"):
            continue
        line = line[prefix_chars:].strip(" ")
        if line == "":
            break
        if free_format:
            fields = [f for f in re.split(r"[ \t]+", line.split("$", 1)[0]) if f != ""]
        else:
            fields = [line[k:k + field_width] for k in range(0, len(line), field_width)]
        fields += [""] * (2 * per_line)
        for k in range(per_line):
            if value_type == 2:
                times.append(field_value(fields[2 * k]))
                values.append(field_value(fields[2 * k + 1]))
            else:
                times.append(len(times) * dt)
                values.append(field_value(fields[k]))
    if not times or times[0] < 0 or any(b <= a for a, b in zip(times, times[1:])):
        return list(TWO_POINTS)
    return list(zip(times, values))


def function_points(function, model_folder):
    """The points of one time-history function of the model file, or None when the function
    is not read (another family) or its data cannot be read (the host's status is not 0)."""
    if function.get("family", 2) != 2:
        return None
    kind = function["kind"]
    try:
        if kind == 0:
            f = function["file"]
            return read_record_text(os.path.join(model_folder, f["path"]), f.get("header_lines", 0),
                                    f.get("prefix_chars", 0), f.get("points_per_line", 1),
                                    f.get("value_type", 1), f.get("free_format", True),
                                    f.get("field_width", 10), f.get("dt", 0.02))
        if kind in (1, 7):
            return [(float(t), float(v)) for t, v in function["points"]]
        if kind in (2, 3):
            return wave_points(kind, function["period"], function["steps_per_cycle"],
                               function["cycles"], function["amplitude"])
        if kind == 4:
            return ramp_points(function["time"], function["amplitude"], function["max_time"])
        if kind == 5:
            return sawtooth_points(function["period"], function["ramp_time"], function["cycles"],
                                   function["amplitude"])
        if kind == 6:
            return triangular_points(function["period"], function["cycles"], function["amplitude"])
    except KeyError:
        return None
    return None


# --- Load cases: the L file --------------------------------------------------------------

CRITERION = "Deformation beyond X point for any component"


def gravity_case(name, entries):
    """TrelkGravityCaseRec, 1024 bytes. entries: (kind, pattern name, factor); the Text
    field and unused entries are never assigned."""
    fields = [(0, text(name, 40)), (88, i16(len(entries)))]
    for k, (kind, pattern, factor) in enumerate(entries):
        fields += [(90 + 2 * k, i16(kind)), (130 + 40 * k, text(pattern, 40)),
                   (930 + 4 * k, f32(factor))]
    return placed(1024, *fields)


def drift_name(second_axis):
    return "H2 Drift" if second_axis else "H1 Drift"


def pushover_case(name, entries, monitored_dof, modes=None):
    """TrelkPushoverCaseRec, 1042 bytes. entries: (kind, pattern name, factor) of a case of
    pattern loads; modes: (mode number, factor) of a case of mode loads, whose kinds and
    names stay unassigned."""
    fields = [(0, text(name, 40)), (40, bytes([1, 0 if modes is None else 1])),
              (44, text(CRITERION, 40)), (84, i16(50) + i16(200) + f32(0.02)),
              (1008, text(drift_name(monitored_dof == 2), 20))]
    if modes is None:
        fields.append((92, i16(len(entries))))
        for k, (kind, pattern, factor) in enumerate(entries):
            fields += [(94 + k, bytes([kind])), (114 + 40 * k, text(pattern, 40)),
                       (914 + 4 * k, f32(factor))]
    else:
        fields.append((92, i16(len(modes))))
        for k, (mode, factor) in enumerate(modes):
            fields += [(914 + 4 * k, f32(factor)), (995 + k, bytes([mode]))]
    return placed(1042, *fields)


def dynamic_case(name, steps, step, directions, gravity):
    """TrelkDynamicCaseRec, 348 bytes. directions: for U1, U2, U3 either None or (function
    label, point count of the kept function or 0, scale factor, time factor)."""
    g = widened(gravity)
    fields = [(0, text(name, 40)), (40, bytes([1])), (42, text(CRITERION, 40)),
              (82, f32(steps * step) + f32(step) + i16(200)), (336, i16(1))]
    for d, entry in enumerate(directions):
        if entry is None:
            fields += [(92 + 12 * d, text("", 12)), (128 + 12 * d, text("", 12)),
                       (164 + 40 * d, text("", 40)), (290 + 4 * d, f32(0.0)),
                       (302 + 4 * d, f32(1.0))]
        else:
            label, count, factor, time_factor = entry
            fields += [(92 + 12 * d, text(RECORDS_SUBFOLDER, 12)), (128 + 12 * d, text(label, 12)),
                       (164 + 40 * d, text(RECORD_TITLE + label, 40)), (284 + 2 * d, i16(count)),
                       (290 + 4 * d, f32(factor / g)), (302 + 4 * d, f32(time_factor))]
    fields.append((314, text(drift_name(directions[0] is None and directions[1] is not None), 20)))
    return placed(348, *fields)


def l_file(name, gravity, pushover, dynamic, drift_count):
    """The load case file: counts and capacities of the twenty case lists (the case lists
    grow from capacity 0, so the first case gives 11), the gravity, pushover and dynamic
    cases, and between the last two one flag byte for each pushover case and drift."""
    counts = [len(gravity), len(pushover), len(dynamic)] + [0] * 17
    out = mx.title_block(name)
    out += b"".join(i16(c) for c in counts)
    out += b"".join(i16(mx.grown_capacity(c, capacity=0)) for c in counts)
    assert len(out) == 160
    out += b"".join(gravity) + b"".join(pushover) + zeros(len(pushover) * drift_count)
    return out + b"".join(dynamic)


# --- The analysis series: the A file -----------------------------------------------------

def damping_values(damping):
    """DampPeriod1, DampPeriod2, DampRatio1, DampRatio2 by the damping type; None for a type
    that fills nothing (the pushover series passes -1)."""
    if damping is None:
        return None
    kind = damping["type"]
    a = damping.get("mass_coefficient", 0.0)
    b = damping.get("stiffness_coefficient", 0.0)
    f1, f2 = damping.get("values", [0.0, 0.0])
    r1, r2 = damping.get("ratios", [0.0, 0.0])
    if kind == 1:
        return [0.1, 0.9, a * 0.1 / 4 / 3.1415926, b * 3.1415926 / 0.9]
    if kind in (2, 3) and f1 > f2:
        f1, f2, r1, r2 = f2, f1, r2, r1
    if kind == 2:
        return [f1, f2, r1, r2]
    if kind == 3:
        return [1 / f2, 1 / f1, r2, r1]
    return None


def series_entry(series, damping):
    """TrelkLoadCaseRec, 194 bytes: "DynaAnalysis" or "PushAnalysis"; its Text is blank."""
    fields = [(0, text(series, 12)), (12, text("Trelk: " + series, 60)), (72, text("", 40)),
              (116, i16(10)), (122, f32(1.0))]
    values = damping_values(damping)
    if values is not None:
        fields.append((146, mx.f32s(values)))
    return placed(194, *fields)


def a_file(name, entry=None):
    """The analysis file: one series entry or none; no matrix, factor or list entries."""
    out = mx.title_block(name) + i16(0 if entry is None else 1) + i16(0) + i16(0)
    if entry is not None:
        out += entry
    return out + i16(0) + i16(0)


# --- Translating the load cases of a model file ------------------------------------------

def mode_number(load_name):
    """Leading blanks skipped, an optional sign, the longest run of digits; none gives 0."""
    match = re.match(r" *([+-]?)(\d*)", load_name)
    digits = match.group(2)
    number = int(digits) if digits else 0
    number = -number if match.group(1) == "-" else number
    assert 0 <= number <= 255, load_name
    return number


def load_cases(model, patterns, functions, drift_count, gravity):
    """The L file's cases and the series entry of the A file, from the model file's cases.
    patterns: label -> the names that the load translation gave the pattern ("node",
    "element", "self" or None each); functions: label -> points of the kept functions."""
    grav, push, dyn = [], [], []
    last_history, series = None, None
    for case in model.get("load_cases", []):
        name, kind, loads = case["name"], case["type"], case.get("loads", [])
        if kind == 8:
            directions = {}
            for load in reversed(loads):
                if load["type"] == "Accel" and load["name"] in ("U1", "U2", "U3"):
                    directions[load["name"]] = (load.get("function", ""), load.get("factor", 1.0),
                                                load.get("time_factor", 1.0))
            if not directions:
                continue
            entries = []
            for d in ("U1", "U2", "U3"):
                if d not in directions:
                    entries.append(None)
                    continue
                label, factor, time_factor = directions[d]
                count = len(functions[label]) if label in functions else 0
                entries.append((label, count, factor, time_factor))
            steps, step = case["time_step"]["steps"], case["time_step"]["size"]
            if len(dyn) + 1 < 20:
                dyn.append(dynamic_case(name, steps, step, entries, gravity))
            last_history = case
            continue
        if kind != 2:
            continue
        application = case.get("load_application", {})
        if application.get("control", 1) == 1:
            if len(grav) >= 20:
                continue
            entries = []
            for load in loads:
                if load["type"] != "Load" or load["name"] not in patterns:
                    continue
                names = patterns[load["name"]]
                for k, key in ((1, "node"), (2, "element"), (3, "self")):
                    if names[key] is not None and len(entries) < 20:
                        entries.append((k, names[key], load.get("factor", 1.0)))
            grav.append(gravity_case(mx.name_with_suffix("", name, len(grav) + 1), entries))
        elif application.get("control", 1) == 2:
            if len(push) >= 20:
                continue
            first = next((load["type"] for load in loads
                          if load["type"] in ("Load", "Mode", "Accel")), None)
            dof = application.get("monitored_dof", 1)
            if first == "Load":
                entries = [(1, patterns[load["name"]]["node"], load.get("factor", 1.0))
                           for load in loads if load["type"] == "Load" and load["name"] in patterns
                           and patterns[load["name"]]["node"] is not None]
                push.append(pushover_case(name, entries, dof))
            elif first == "Mode":
                modes = [(mode_number(load["name"]), load.get("factor", 1.0))
                         for load in loads if load["type"] == "Mode"][:6]
                push.append(pushover_case(name, [], dof, modes=modes))
            elif first == "Accel":
                accel = {"UX": "AccelUX", "UY": "AccelUY"}
                entries = [(1, accel[load["name"]], load.get("factor", 1.0))
                           for load in loads if load["type"] == "Accel" and load["name"] in accel]
                push.append(pushover_case(name, entries, dof))
    if last_history is not None and dyn:
        series = series_entry("DynaAnalysis", last_history.get("damping"))
    elif push:
        series = series_entry("PushAnalysis", None)
    return {"gravity": grav, "pushover": push, "dynamic": dyn, "drift_count": drift_count}, series


def pattern_names(source):
    """The names that the load translation gives each pattern with content (its place in
    the model's pattern list numbers the long ones)."""
    names = {}
    for i, p in enumerate(source["patterns"], start=1):
        names.setdefault(p["label"], {
            "node": mx.name_with_suffix("LoadNode-", p["label"], i) if p["node_loads"] else None,
            "element": mx.name_with_suffix("LoadFrame-", p["label"], i) if p["frame_loads"] else None,
            "self": mx.name_with_suffix("SelfWeight-", p["label"], i) if p["self_weight"] else None})
    return names


# --- Reading the geometry of a model file ------------------------------------------------

def load_model(name):
    with open(os.path.join(HERE, name, "model.json"), encoding="utf-8") as stream:
        return json.load(stream)


def model_nodes(model):
    """Source nodes in model order; node record k + 1 for the k-th point."""
    return [{"label": p["name"], "x": float(p["x"]), "y": float(p["y"]), "z": float(p["z"]),
             "restrained": list(p.get("restraints", [False] * 6)),
             "mass": [float(m) for m in p.get("mass", [0.0] * 6)], "id": k + 2}
            for k, p in enumerate(model["points"])]


def frame_type(node_i, node_j):
    """1 column, 2 beam, 3 brace, with the limits of 5 and 85 degrees written with pi as 3.14."""
    dx, dy, dz = (node_j[k] - node_i[k] for k in "xyz")
    c = abs(dz / math.sqrt(dz * dz + dx * dx + dy * dy))
    if c > math.cos(15.7 / 180):
        return 1
    if c < math.cos(266.9 / 180):
        return 2
    return 3


# Element groups of frames in their fixed order: name, group kind, frame type, material
# type (1 concrete, 2 steel), option, and the compound of a frame without release or hinge.
FRAME_GROUPS = [("ElemConcCol", 3, 1, 1, 5, "ConcCol"), ("ElemConcBeam", 2, 2, 1, 1, "ConcBeam"),
                ("ElemConcBrace", 5, 3, 1, 1, "ConcCol"), ("ElemSteelCol", 3, 1, 2, 5, "SteelCol"),
                ("ElemSteelBeam", 2, 2, 2, 1, "SteelBeam"), ("ElemSteelBrace", 5, 3, 2, 1, "SteelCol")]


def frame_element_groups(frames, compounds):
    """(name, kind, members) of the frame groups that have members, with the frames in model
    order; frames without hinges and releases. Sets "group" and "elem" on each frame that
    gets an element (0 on the others)."""
    for frame in frames:
        frame["group"], frame["elem"] = 0, 0
    groups, g, e = [], 0, 0
    for name, kind, ftype, mtype, option, compound in FRAME_GROUPS:
        members = [f for f in frames if f["type"] == ftype and f["mat_type"] == mtype]
        if not members:
            continue
        g += 1
        e += 1                                    # the group's leading record
        rows = []
        for frame in members:
            e += 1
            frame["group"], frame["elem"] = g, e
            rows.append(([frame["i"]["id"], frame["j"]["id"]], 6, 2, option,
                         compounds[(frame["section"], compound)], frame["angle"]))
        groups.append((name, kind, rows))
    return groups


def source_frames(model, nodes, sections):
    """The frames that are read (their section is known), with what the mass, load and cut
    rules need. sections: label -> (area, material dict or None, material type 1/2/3)."""
    by_label = mx.first_by_label(nodes)
    frames = []
    for f in model["frames"]:
        if f["section"] not in sections:
            continue
        area, material, mat_type = sections[f["section"]]
        node_i, node_j = by_label[f["i"]], by_label[f["j"]]
        frames.append({"label": f["name"], "section": f["section"], "i": node_i, "j": node_j,
                       "area": area, "material": material, "mat_type": mat_type,
                       "type": frame_type(node_i, node_j), "angle": float(f.get("angle", 0.0)),
                       "mass_per_length": float(f.get("mass_per_length", 0.0)),
                       "dist": [], "point": []})
    return frames


def host_groups(model):
    return [(g["name"], [(a["type"], a["name"]) for a in g.get("assignments", [])])
            for g in model.get("groups", [])]


def write_records(model_name, records):
    folder = os.path.join(HERE, model_name, "expected-records")
    if os.path.isdir(folder):
        shutil.rmtree(folder)
    if not records:
        return
    os.makedirs(folder)
    for name, data in records.items():
        with open(os.path.join(folder, name), "wb") as stream:
            stream.write(data)


# Materials as the component records read them.
C30_24 = {"E": 3e7, "Nu": 0.2, "G": 1.25e7, "Fu": 30000.0, "ConcFc": 30000.0, "UnitWeight": 24.0}
S355 = {"E": 2e8, "Nu": 0.3, "G": 76923077.0, "Fu": 490000.0, "UnitWeight": 76.97}


def material_library(u):
    """Material components of C30, S355 and the uniaxial rebar B500, in this model order."""
    return {
        "MatInel": [mx.mat_inel(1, "MatIneFibRebar-B500", 0, 2e8, 550000.0, 605000.0, 0.0, 0.2, u),
                    mx.mat_inel(2, "MatIneFibConc-C30", 1, 3e7, 0.9 * 30000.0, 30000.0, 0.04, 0.02, u),
                    mx.mat_inel(3, "MatIneShearConc-C30", 2, 1.25e7, 0.0, 30000.0 / 2, 0.0, 2.0, u)],
        "MatElasticFiber": [mx.mat_fiber(1, "MatElaFiberConc-C30", 3e7, u),
                            mx.mat_fiber(2, "MatElaFiberSteel-S355", 2e8, u)],
        "MatElasticShear": [mx.mat_shear(1, "MatElaShearConc-C30", 1.25e7, u),
                            mx.mat_shear(2, "MatElaShearSteel-S355", 76923077.0, u)],
        "MatElasticSlab": [mx.mat_slab(1, "MatElaSlabConc-C30", 3e7, 0.2, u),
                           mx.mat_slab(2, "MatElaSlabSteel-S355", 2e8, 0.3, u)],
    }


def frame_library(steel_section, conc_section, steel, conc, u):
    """Cross sections, FEMA components and the eight plain compounds of one steel and one
    concrete section; and the compound numbers by (section label, role)."""
    beams, columns, fema_beams, fema_columns = mx.section_components(
        [steel_section], [conc_section], steel, conc, u)
    compounds = mx.plain_compounds([steel_section], [conc_section], steel, conc, u)
    roles = {}
    for label, first in ((steel_section[1], 1), (conc_section[1], 5)):
        tag = "Steel" if first == 1 else "Conc"
        roles[(label, tag + "Beam")] = first
        roles[(label, tag + "Col")] = first + 2
    records = {"FemaBeam": fema_beams, "FemaColumn": fema_columns, "XecBeam": beams,
               "XecColumn": columns, "CpdFrame": compounds}
    return records, roles


# --- groups-cuts ---------------------------------------------------------------------------

def groups_cuts():
    """Supports at two elevations (0 and 1.5), frames and walls standing on either, a grade
    beam between two supports, an aluminium brace on a support that gets no element, a floor
    on supports; groups of every sort, "ALL" among them; one mode pushover case (see
    model.json). No material has mass and there is no load pattern."""
    name = "groups-cuts"
    model = load_model(name)
    files = mx.empty_files(name)
    u = mx.UNITS_KN_M

    nodes = model_nodes(model)
    c300 = {"area": 0.09, "As2": 0.075, "As3": 0.075, "J": 0.001139, "I22": 0.000675, "I33": 0.000675}
    heb = {"area": 0.00781, "As2": 0.00248, "As3": 0.00583, "J": 5.93e-7, "I22": 2.003e-5,
           "I33": 5.696e-5}
    massless_conc = {"UnitMass": 0.0, "UnitWeight": 24.0}
    massless_steel = {"UnitMass": 0.0, "UnitWeight": 76.97}
    # ALU-TUBE names AL6061, an aluminium that is not read: the section has no material, makes
    # no component, and its frame X1 no element.
    sections = {"C300": (0.09, massless_conc, 1), "HEB200": (0.00781, massless_steel, 2),
                "ALU-TUBE": (0.0012, None, 3)}
    records, compound = frame_library((2, "HEB200", heb, 1), (1, "C300", c300, 2), S355, C30_24, u)
    records.update(material_library(u))
    frames = source_frames(model, nodes, sections)
    assert [(f["label"], f["type"]) for f in frames] == [
        ("K1", 1), ("K2", 1), ("K3", 1), ("K4", 2), ("B1", 2), ("B2", 2), ("X1", 3)]
    frame_groups = frame_element_groups(frames, compound)

    # The one thin concrete section WALL200 makes an elastic and an unused inelastic wall
    # section, a slab section and a wall compound.
    records.update({
        "XecWallElastic": [mx.xec_wall_elastic(1, "XecWallElaC-WALL200", 11, 0.2, 0.2, C30_24, 1, u)],
        "XecWallInel": [mx.xec_wall_inel(1, "Notused-XSecWallCIne-WALL200", 10, 0.2, 0.2, 0.4, C30_24,
                                         2, 1, u)],
        "XecSlab": [mx.xec_slab(1, "XecElaSlabC-WALL200", 0.2, 0.2, C30_24, 1, u)],
        "CpdWall": [mx.cpd_wall(1, "CpdWallConcEla-WALL200", 11, 1, 1, 0.2, C30_24, u)],
        "EndZone": [mx.DEFAULT_END_ZONE], "Release": [mx.EMBED_BEAM_RELEASE]})

    host_areas = [(a["name"], a["section"], a["points"]) for a in model["areas"]]
    areas = mx.read_areas(nodes, host_areas, ["WALL200"])
    assert len(nodes) == 16, "no area is divided, so no node is added"
    # W1 stands on D0, E0 (elevation 0); W2, given top first, on G1, F1 (elevation 1.5; G1 is
    # restrained in U3 only, which makes it a support all the same); the floor S0 lies on
    # D0, E0 at elevation 0 with two free corners, and is cut as well.
    assert [[n["label"] for n in a["nodes"]] for a in areas] == [
        ["D0", "E0", "D3", "E3"], ["G1", "F1", "G3", "F3"], ["D0", "E0", "I0", "H0"]]
    assert [mx.area_orientation(a["nodes"]) for a in areas] == [1, 1, 2]
    e = max(f["elem"] for f in frames)
    wall_rows, slab_rows = [], []
    for area in areas:
        ids = [n["id"] for n in area["nodes"]]
        crosswise = [ids[0], ids[1], ids[3], ids[2]]
        if mx.area_orientation(area["nodes"]) == 1:
            wall_rows.append((area, (crosswise, 6, 3, 1, 1, 0.0)))
        else:
            slab_rows.append((area, (crosswise, 3, 8, 1, 1, 0.0)))
    area_groups = []
    for group_name, kind, rows in (("ElemConcEWall", 6, wall_rows), ("ElemConcSlabRamp", 12, slab_rows)):
        e += 1
        for area, _ in rows:
            e += 1
            area["elem"] = e
        area_groups.append((group_name, kind, [row for _, row in rows]))
    groups, elements = mx.mixed_element_groups(frame_groups + area_groups)
    assert len(elements) == e == 15
    assert [(f["label"], f["elem"]) for f in frames] == [
        ("K1", 2), ("K2", 3), ("K3", 8), ("K4", 5), ("B1", 6), ("B2", 10), ("X1", 0)]
    assert [a["elem"] for a in areas] == [12, 13, 15]
    for area in areas:
        area["material"], area["thick"] = {"UnitMass": 0.0, "UnitWeight": 24.0}, 0.2
        area["weight_material"] = area["material"]

    source = mx.plain_source(nodes, frames, areas)
    mass_rows = mx.nodal_mass_rows(source, len(nodes) + 1)
    assert all(v == 0.0 for row in mass_rows for v in row)
    # Cut at the base: K1 (support at I), K2 (at J), K3 (on the upper support), X1 (element
    # 0); not K4, supported at both ends. W1, W2 and the floor S0.
    cuts = mx.base_cut_members(source)
    assert cuts == ([(0, 2), (1, 3), (0, 8), (0, 0)], [(0, 12), (0, 13), (0, 15)]), cuts
    # Frames: "all" 1, "ALL" skipped, " Empty " 2 (named "Empty"), "Alum" 3 (X1 flags element
    # 0, the link is lost), "Mixed" 4 (the cable is lost), the 25-character name 5 (cut to 20
    # in the record), the 46-character name 6 (named "7").
    frame_sets = mx.structure_frame_sets(source, host_groups(model))
    assert [(n, sorted(p), sorted(el)) for n, p, el in frame_sets] == [
        ("all", [5], []), (" Empty ", [], []), ("Alum", [], [0]),
        ("Mixed", [3, 15], [3, 10, 13, 15]), ("Storey-One-Columns-Group1", [], [2, 8, 12]),
        ("Everything-Standing-On-The-Upper-Support-Level", [4, 10, 11], [8, 13])], frame_sets
    drift = mx.drift_pair(nodes)
    assert drift == (5, 2), drift                 # A3 over A0

    library = mx.component_library(records, max_count=mx.max_component_count(records))
    node_list = mx.node_records([(n["x"], n["y"], n["z"], n["restrained"], 0) for n in nodes])
    files["TRKDS"] = mx.s_file(name, u, node_list, len(nodes) + 1, len(nodes), 200, library,
                               groups=groups, group_capacity=mx.grown_capacity(len(groups)),
                               elements=elements, element_capacity=mx.grown_capacity(len(elements)),
                               mass_rows=mass_rows, frame_sets=frame_sets, cuts=cuts, drift=drift)

    # One pushover case of mode 1: "PushAnalysis" with nothing filled by damping.
    cases, series = load_cases(model, {}, {}, 2, u["gravity"])
    files["TRKDL"] = l_file(name, cases["gravity"], cases["pushover"], cases["dynamic"],
                            cases["drift_count"])
    files["TRKDA"] = a_file(name, series)
    return files, {}



# --- complete ------------------------------------------------------------------------------

def complete():
    """A two-storey frame in kN and m with a diaphragm, nodal loads, frame loads and self
    weight, masses from elements and loads, gravity, pushover ("Load", "Mode", "Accel") and
    history cases, and time-history functions of every kind: two record text files that are
    read, one that is rejected, one that is missing, user points, sine, cosine, ramp,
    sawtooth, triangular, periodic points, a sine that cannot be read and a response spectrum
    (see model.json)."""
    name = "complete"
    model = load_model(name)
    files = mx.empty_files(name)
    u = mx.UNITS_KN_M

    nodes = model_nodes(model)
    conc = dict(C30_24, UnitWeight=25.0)
    steel = dict(S355, UnitWeight=78.5)
    c500 = {"area": 0.25, "As2": 0.2083, "As3": 0.2083, "J": 0.0088, "I22": 0.005208, "I33": 0.005208}
    ipe = {"area": 0.005381, "As2": 0.002568, "As3": 0.00321, "J": 2.01e-7, "I22": 6.04e-6,
           "I33": 8.356e-5}
    sections = {"C500": (0.25, {"UnitMass": 2.5, "UnitWeight": 25.0}, 1),
                "IPE300": (0.005381, {"UnitMass": 7.85, "UnitWeight": 78.5}, 2)}
    records, compound = frame_library((2, "IPE300", ipe, 1), (1, "C500", c500, 2), steel, conc, u)
    records.update(material_library(u))
    records.update({"EndZone": [mx.DEFAULT_END_ZONE], "Release": [mx.EMBED_BEAM_RELEASE]})
    frames = source_frames(model, nodes, sections)
    frame_groups = frame_element_groups(frames, compound)
    groups, elements = mx.mixed_element_groups(frame_groups)
    # ElemConcCol: K1, K2 (standing from B1 down to B0), K3, K4; ElemSteelBeam: G1, G2.
    assert [(f["label"], f["group"], f["elem"]) for f in frames] == [
        ("K1", 1, 2), ("K2", 1, 3), ("K3", 1, 4), ("K4", 1, 5), ("G1", 2, 7), ("G2", 2, 8)]

    # Loads: WIND at A1 and A2, LIVE downward at A2; DEAD uniform on both beams, LIVE on G1.
    source = mx.plain_source(nodes, frames, gravity=u["gravity"])
    source["patterns"] = [{"label": p["name"], "swm": float(p.get("self_weight_multiplier", 0.0))}
                          for p in model["load_patterns"]]
    source["mass_source"] = (model["mass_source"]["option"],
                             [(l["pattern"], float(l["factor"])) for l in model["mass_source"]["loads"]])
    host_forces = {p["name"]: [(f["pattern"], f.get("csys", "GLOBAL"), [float(v) for v in f["values"]])
                               for f in p.get("forces", [])] for p in model["points"]}
    host_dist = {f["name"]: [(d["pattern"], d.get("type", 1), d.get("csys", "GLOBAL"), d["dir"],
                              float(d["rd1"]), float(d["rd2"]), float(d["val1"]), float(d["val2"]))
                             for d in f.get("distributed_loads", [])] for f in model["frames"]}
    mx.read_load_nodes(source, host_forces)
    mx.read_frame_loads(source, host_dist, {}, u)
    mx.mark_load_pattern_contents(source)
    assert [(p["label"], p["node_loads"], p["frame_loads"], p["self_weight"])
            for p in source["patterns"]] == [("DEAD", False, True, True), ("LIVE", True, True, False),
                                             ("WIND", True, False, False),
                                             ("EMPTY", False, False, False)]
    mass_rows = mx.nodal_mass_rows(source, len(nodes) + 1)
    node_patterns = mx.node_load_patterns(source, mass_rows)
    frame_loads = mx.frame_load_patterns(source, len(groups))
    self_weight = mx.self_weight_patterns(source)
    assert [p[0] for p in node_patterns] == ["LoadNode-LIVE", "LoadNode-WIND", "AccelUX", "AccelUY"]
    assert [p[0] for p in frame_loads] == ["LoadFrame-DEAD", "LoadFrame-LIVE"]
    assert [p[0] for p in self_weight] == ["SelfWeight-DEAD"]
    cuts = mx.base_cut_members(source)
    assert cuts == ([(0, 2), (1, 3)], []), cuts
    frame_sets = mx.structure_frame_sets(source, host_groups(model))
    drift = mx.drift_pair(nodes)
    assert drift == (6, 2), drift                 # A2 over A0; B2, the last node, cannot be one

    library = mx.component_library(records, max_count=mx.max_component_count(records))
    slaved = {"A1": 1, "B1": 1}                  # diaphragm D1
    node_list = mx.node_records([(n["x"], n["y"], n["z"], n["restrained"], slaved.get(n["label"], 0))
                                 for n in nodes])
    files["TRKDS"] = mx.s_file(name, u, node_list, len(nodes) + 1, len(nodes), 200, library,
                               diaphragms=[mx.diaphragm_record("D1")],
                               groups=groups, group_capacity=mx.grown_capacity(len(groups)),
                               elements=elements, element_capacity=mx.grown_capacity(len(elements)),
                               mass_rows=mass_rows, frame_sets=frame_sets,
                               node_patterns=node_patterns, frame_loads=frame_loads,
                               self_weight=self_weight, cuts=cuts, drift=drift)

    # Functions: every kept one has its record file; BADSINE (a sine without cycles) and the
    # response spectrum have none.
    model_folder = os.path.join(HERE, name)
    functions = {}
    for function in model["functions"]:
        points = function_points(function, model_folder)
        if points is not None:
            functions[function["name"]] = points
    assert sorted(functions) == sorted(["EQFREE", "EQFIXED", "EQDOWN", "EQNOFILE", "USER", "SINE",
                                        "COSINE", "RAMP", "SAWTOOTH-WITH-A-LONG-NAME-X", "TRI",
                                        "PERIODIC"])
    record_files = {label: record_file(label, points) for label, points in functions.items()}

    cases, series = load_cases(model, pattern_names(source), functions, 2, u["gravity"])
    files["TRKDL"] = l_file(name, cases["gravity"], cases["pushover"], cases["dynamic"],
                            cases["drift_count"])
    files["TRKDA"] = a_file(name, series)
    return files, record_files


if __name__ == "__main__":
    for model_name, build in (("groups-cuts", groups_cuts), ("complete", complete)):
        built, record_files = build()
        mx.write(model_name, built)
        write_records(model_name, record_files)
