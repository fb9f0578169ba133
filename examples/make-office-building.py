#!/usr/bin/env python3
"""Writes examples/office-building.json and the ground-motion record it reads.

A six-storey office building in kN and m, written as the Vask model file that
`vask2trelk transfer` reads:

- a 4 x 3 bay grid of 6 m bays; the ground storey 4.0 m high, the five above 3.5 m;
- reinforced-concrete columns (larger ones in the lower three storeys) and concrete beams
  along X, with plastic hinges at the beam ends and at the foot of the ground columns;
- steel secondary beams along Y, pinned at both ends (moment releases), and steel braces in
  the two end bays of the line y = 0, with hinges at their ends;
- a lift and stair core of layered reinforced-concrete shear walls (the vertical bars
  carry the wall), thin elastic infill walls in the ground storey, thin floor slabs on
  every floor with two triangular panels in one corner, and a loading ramp up to the first
  floor;
- a rigid diaphragm on every floor, fixed supports at the ground and pinned ones under the
  foot of the ramp;
- loads of every kind in several patterns: self weight (DEAD), finishes and facade (SDEAD),
  office live load (LIVE), roof live load (ROOF), wind (WIND-X) as nodal, frame
  distributed, frame point and area uniform loads;
- the mass source from the elements and from loads (option 3), with plant masses on the
  roof;
- time-history functions of every kind, among them a synthetic ground motion read from
  records/synthetic-quake.txt beside the model, and a response spectrum (which the transfer
  skips);
- gravity, pushover and time-history cases, and some cases the transfer leaves out;
- groups for the columns, the core, the roof, the ramp and the steel.

The output is the same at every run: nothing random, numbers rounded to fixed decimals.
Run it from anywhere: python3 examples/make-office-building.py
"""

import json
import math
import pathlib

HERE = pathlib.Path(__file__).resolve().parent
MODEL = HERE / "office-building.json"
RECORD = HERE / "records" / "synthetic-quake.txt"

XS = [0.0, 6.0, 12.0, 18.0, 24.0]          # grid lines A..E
YS = [0.0, 6.0, 12.0, 18.0]                # grid lines 1..4
LEVELS = [0.0, 4.0, 7.5, 11.0, 14.5, 18.0, 21.5]
GRID_X = "ABCDE"
CORE_X = (2, 3)                            # the core fills the bay C-D ...
CORE_Y = (1, 2)                            # ... between lines 2 and 3
BRACED_BAYS = (0, 3)                       # bays A-B and D-E of line 1
RECORD_DT = 0.01
RECORD_STEPS = 2000

FIXED = [True] * 6
PINNED = [True, True, True, False, False, False]
MOMENT_RELEASE = [False, False, False, True, True, True]   # T, M2, M3 free: a pin


def point_name(ix, iy, level):
    return f"{GRID_X[ix]}{iy + 1}-{level}"


def brace_top(ix, level):
    return f"{GRID_X[ix]}{GRID_X[ix + 1]}1-{level}"


def r(value, digits=6):
    """A number rounded for the file, so that the file is the same on every machine."""
    value = round(value, digits)
    return 0.0 if value == 0 else value


def materials():
    return [
        {"name": "C35", "type": 2, "weight_per_volume": 25.0, "mass_per_volume": 2.549,
         "isotropic": {"E": 34000000, "U": 0.2, "A": 1e-05, "G": 14166667},
         "concrete": {"fc": 35000},
         "stress_strain": [[-0.0035, -29750], [-0.002, -35000], [0, 0], [0.00011, 3200]]},
        {"name": "S355", "type": 1, "weight_per_volume": 76.98, "mass_per_volume": 7.849,
         "isotropic": {"E": 210000000, "U": 0.3, "A": 1.2e-05, "G": 80769231},
         "steel": {"Fy": 355000, "Fu": 510000, "eFy": 390500, "eFu": 561000}},
        {"name": "B500B", "type": 6, "symmetry": 3, "weight_per_volume": 76.98,
         "mass_per_volume": 7.849,
         "uniaxial": {"E": 200000000, "A": 1e-05},
         "rebar": {"Fy": 500000, "Fu": 540000, "eFy": 550000, "eFu": 594000}},
        {"name": "GLASS", "type": 5, "weight_per_volume": 25.0,
         "isotropic": {"E": 70000000, "U": 0.22, "A": 9e-06, "G": 28688525}},
    ]


def rectangle(name, material, depth, width, design):
    """A solid rectangle, `depth` along local 2 and `width` along local 3."""
    area = depth * width
    i33 = width * depth ** 3 / 12
    i22 = depth * width ** 3 / 12
    a, b = max(depth, width), min(depth, width)
    j = a * b ** 3 * (1 / 3 - 0.21 * b / a * (1 - b ** 4 / (12 * a ** 4)))
    return {"name": name, "type": 8, "material": material, "rebar_design": design,
            "properties": {"area": r(area), "As2": r(area * 5 / 6), "As3": r(area * 5 / 6),
                           "J": r(j, 8), "I22": r(i22, 8), "I33": r(i33, 8),
                           "S22": r(i22 / (width / 2), 8), "S33": r(i33 / (depth / 2), 8),
                           "Z22": r(depth * width ** 2 / 4, 8),
                           "Z33": r(width * depth ** 2 / 4, 8),
                           "R22": r(math.sqrt(i22 / area)), "R33": r(math.sqrt(i33 / area))}}


def frame_sections():
    return [
        rectangle("C600", "C35", 0.6, 0.6, 1),
        rectangle("C500", "C35", 0.5, 0.5, 1),
        rectangle("B350x650", "C35", 0.65, 0.35, 2),
        # Steel: an I-section for the secondary beams and a tube for the braces.
        {"name": "IPE400", "type": 1, "material": "S355",
         "properties": {"area": 0.008446, "As2": 0.003859, "As3": 0.004522, "J": 5.13e-07,
                        "I22": 1.318e-05, "I33": 0.0002313, "S22": 0.0001464,
                        "S33": 0.001156, "Z22": 0.0002292, "Z33": 0.001307,
                        "R22": 0.0395, "R33": 0.1655}},
        {"name": "HEB300", "type": 1, "material": "S355",
         "properties": {"area": 0.01491, "As2": 0.003315, "As3": 0.0095, "J": 1.85e-06,
                        "I22": 8.563e-05, "I33": 0.0002517, "S22": 0.0005709,
                        "S33": 0.001678, "Z22": 0.00087, "Z33": 0.001869,
                        "R22": 0.0758, "R33": 0.1299}},
        {"name": "SHS200x10", "type": 7, "material": "S355",
         "properties": {"area": 0.0074, "As2": 0.0037, "As3": 0.0037, "J": 7.2e-05,
                        "I22": 4.4e-05, "I33": 4.4e-05, "S22": 0.00044, "S33": 0.00044,
                        "Z22": 0.00052, "Z33": 0.00052, "R22": 0.0771, "R33": 0.0771}},
    ]


def area_sections():
    def layer(name, distance, thickness, material, angle, s11, s22, s12):
        return {"name": name, "distance": distance, "thickness": thickness, "type": 1,
                "integration_points": 2 if material == "C35" else 1, "material": material,
                "material_angle": angle, "S11": s11, "S22": s22, "S12": s12}

    return [
        {"name": "SLAB220", "shell_type": 1, "material": "C35",
         "membrane_thickness": 0.22, "bending_thickness": 0.22},
        {"name": "RAMP250", "shell_type": 1, "material": "C35",
         "membrane_thickness": 0.25, "bending_thickness": 0.25},
        {"name": "INFILL200", "shell_type": 1, "material": "C35",
         "membrane_thickness": 0.2, "bending_thickness": 0.2},
        # Steel plates: a shear wall panel and a roof deck.
        {"name": "PLATE15", "shell_type": 1, "material": "S355",
         "membrane_thickness": 0.015, "bending_thickness": 0.015},
        {"name": "DECK12", "shell_type": 1, "material": "S355",
         "membrane_thickness": 0.012, "bending_thickness": 0.012},
        # The core: concrete nonlinear in S22 (vertical), vertical and horizontal bars.
        {"name": "CORE300", "shell_type": 6,
         "layers": [layer("CONC", 0.0, 0.3, "C35", 0, 1, 2, 1),
                    layer("BARS-V1", -0.11, 0.0008, "B500B", 90, 2, 0, 0),
                    layer("BARS-V2", 0.11, 0.0008, "B500B", 90, 2, 0, 0),
                    layer("BARS-H1", -0.1, 0.0006, "B500B", 0, 2, 0, 0),
                    layer("BARS-H2", 0.1, 0.0006, "B500B", 0, 2, 0, 0)]},
        # The core's end walls act as general walls: concrete nonlinear in S11
        # (horizontal) only, and in both directions.
        {"name": "CORE300-H", "shell_type": 6,
         "layers": [layer("CONC", 0.0, 0.3, "C35", 0, 2, 1, 1),
                    layer("BARS-V1", -0.11, 0.0008, "B500B", 90, 2, 0, 0),
                    layer("BARS-H1", -0.1, 0.0006, "B500B", 0, 2, 0, 0)]},
        {"name": "CORE300-HV", "shell_type": 6,
         "layers": [layer("CONC", 0.0, 0.3, "C35", 0, 2, 2, 1),
                    layer("BARS-V1", -0.11, 0.0008, "B500B", 90, 2, 0, 0),
                    layer("BARS-H1", -0.1, 0.0006, "B500B", 0, 2, 0, 0)]},
    ]


class Model:
    def __init__(self):
        self.points = []
        self.by_name = {}
        self.frames = []
        self.areas = []

    def point(self, name, x, y, z, **extra):
        entry = {"name": name, "x": r(x), "y": r(y), "z": r(z)}
        entry.update(extra)
        self.points.append(entry)
        self.by_name[name] = entry
        return entry

    def frame(self, name, section, i, j, **extra):
        entry = {"name": name, "section": section, "i": i, "j": j}
        entry.update(extra)
        self.frames.append(entry)
        return entry

    def area(self, name, section, corners, **extra):
        entry = {"name": name, "section": section, "points": corners}
        entry.update(extra)
        self.areas.append(entry)
        return entry


def in_core_bay(ix, iy):
    return CORE_X[0] <= ix < CORE_X[1] and CORE_Y[0] <= iy < CORE_Y[1]


def build():
    m = Model()
    top = len(LEVELS) - 1

    # ---- points: the grid at every level, the foot of the ramp ----
    for level, z in enumerate(LEVELS):
        for iy, y in enumerate(YS):
            for ix, x in enumerate(XS):
                extra = {}
                if level == 0:
                    extra["restraints"] = FIXED
                else:
                    extra["constraints"] = [f"FLOOR{level}"]
                m.point(point_name(ix, iy, level), x, y, z, **extra)
        if level > 0:
            # The top of each brace pair, at mid-span of the beam above the braced bay.
            for ix in BRACED_BAYS:
                m.point(brace_top(ix, level), (XS[ix] + XS[ix + 1]) / 2, 0.0, z,
                        constraints=[f"FLOOR{level}"])
    m.point("RAMP-1", 0.0, -8.0, 0.0, restraints=PINNED)
    m.point("RAMP-2", 6.0, -8.0, 0.0, restraints=PINNED)

    # Plant on the roof: its mass, and its weight as a nodal live load.
    for name in (point_name(1, 1, top), point_name(1, 2, top)):
        m.by_name[name]["mass"] = [4.0, 4.0, 4.0, 0, 0, 0]
        m.by_name[name]["forces"] = [{"pattern": "LIVE", "values": [0, 0, -40.0, 0, 0, 0]}]
    # Wind on the windward face (x = 0), a quarter more at the roof.
    for level in range(1, top + 1):
        for iy in range(len(YS)):
            edge = iy in (0, len(YS) - 1)
            storey = LEVELS[level] - LEVELS[level - 1]
            force = 1.2 * 6.0 * storey * (0.5 if edge else 1.0) * (1.25 if level == top else 1.0)
            entry = m.by_name[point_name(0, iy, level)]
            entry.setdefault("forces", []).append(
                {"pattern": "WIND-X", "values": [r(force, 3), 0, 0, 0, 0, 0]})
    # The facade corners carry the weight of the glazing mullions down to the ground floor.
    for ix, iy in ((0, 0), (4, 0), (0, 3), (4, 3)):
        entry = m.by_name[point_name(ix, iy, 1)]
        entry.setdefault("forces", []).append(
            {"pattern": "SDEAD", "values": [0, 0, -12.0, 0, 0, 0]})

    # ---- columns ----
    column_names = []
    for level in range(1, top + 1):
        for iy in range(len(YS)):
            for ix in range(len(XS)):
                # The top storey of the last line carries steel columns under the plant.
                if level == top and iy == len(YS) - 1:
                    section = "HEB300"
                else:
                    section = "C600" if level <= 3 else "C500"
                name = f"COL-{GRID_X[ix]}{iy + 1}-{level}"
                extra = {}
                if level == 1:
                    # Plastic hinges (axial and biaxial bending) at the foot and the head.
                    extra["hinges"] = [{"dof": 10, "relative_distance": 0.0},
                                       {"dof": 10, "relative_distance": 1.0}]
                if ix == 2 and iy == 0:
                    extra["angle"] = 90.0
                m.frame(name, section, point_name(ix, iy, level - 1),
                        point_name(ix, iy, level), **extra)
                column_names.append((level, name))

    # ---- concrete beams along X, with hinges near their ends ----
    for level in range(1, top + 1):
        for iy in range(len(YS)):
            perimeter = iy in (0, len(YS) - 1)
            for ix in range(len(XS) - 1):
                name = f"BX-{GRID_X[ix]}{iy + 1}-{level}"
                loads = []
                if perimeter and level < top:
                    # Facade: cladding along the perimeter beams.
                    loads.append({"pattern": "SDEAD", "dir": 10, "rd1": 0, "rd2": 1,
                                  "val1": 8.0, "val2": 8.0})
                if not perimeter:
                    # Partitions: a line load over the middle of the span.
                    loads.append({"pattern": "LIVE", "dir": 10, "rd1": 0.25, "rd2": 0.75,
                                  "val1": 2.0, "val2": 2.0})
                point_loads = []
                if not perimeter:
                    # The steel secondary beams land at the third points of the span.
                    point_loads = [{"pattern": "SDEAD", "dir": 10, "rd": 1 / 3, "val": 18.0},
                                   {"pattern": "SDEAD", "dir": 10, "rd": 2 / 3, "val": 18.0}]
                extra = {"hinges": [{"dof": 6, "relative_distance": 0.05},
                                    {"dof": 6, "relative_distance": 0.95}]}
                if loads:
                    extra["distributed_loads"] = loads
                if point_loads:
                    for load in point_loads:
                        load["rd"] = r(load["rd"], 9)
                    extra["point_loads"] = point_loads
                if iy == 0 and ix in BRACED_BAYS:
                    # The braces meet the beam at mid-span: the beam runs in two halves.
                    mid = brace_top(ix, level)
                    m.frame(name + "a", "B350x650", point_name(ix, iy, level), mid, **extra)
                    m.frame(name + "b", "B350x650", mid, point_name(ix + 1, iy, level),
                            **extra)
                else:
                    m.frame(name, "B350x650", point_name(ix, iy, level),
                            point_name(ix + 1, iy, level), **extra)

    # ---- steel beams along Y, pinned at both ends ----
    for level in range(1, top + 1):
        for ix in range(len(XS)):
            for iy in range(len(YS) - 1):
                name = f"BY-{GRID_X[ix]}{iy + 1}-{level}"
                extra = {"releases": {"i": MOMENT_RELEASE, "j": MOMENT_RELEASE}}
                if level == top and ix == 1:
                    # A mechanical unit on the roof beams of line B.
                    extra["point_loads"] = [{"pattern": "ROOF", "dir": 10, "rd": 0.5,
                                             "val": 25.0}]
                m.frame(name, "IPE400", point_name(ix, iy, level),
                        point_name(ix, iy + 1, level), **extra)

    # ---- steel braces: an inverted V in the end bays of line 1 ----
    for level in range(1, top + 1):
        for ix in BRACED_BAYS:
            mid = brace_top(ix, level)
            for side, foot in (("L", ix), ("R", ix + 1)):
                m.frame(f"BR-{GRID_X[ix]}1{side}-{level}", "SHS200x10",
                        point_name(foot, 0, level - 1), mid,
                        hinges=[{"dof": 8, "relative_distance": 0.0},
                                {"dof": 8, "relative_distance": 1.0}])

    # ---- the core: layered shear walls on the four sides of bay C-D / 2-3 ----
    (x0, x1), (y0, y1) = CORE_X, CORE_Y
    core_names = []
    for level in range(1, top + 1):
        lo, hi = level - 1, level
        walls = {
            "S": [point_name(x0, y0, lo), point_name(x1, y0, lo), point_name(x1, y0, hi),
                  point_name(x0, y0, hi)],
            "N": [point_name(x1, y1, lo), point_name(x0, y1, lo), point_name(x0, y1, hi),
                  point_name(x1, y1, hi)],
            "W": [point_name(x0, y1, lo), point_name(x0, y0, lo), point_name(x0, y0, hi),
                  point_name(x0, y1, hi)],
            "E": [point_name(x1, y0, lo), point_name(x1, y1, lo), point_name(x1, y1, hi),
                  point_name(x1, y0, hi)],
        }
        for side, corners in walls.items():
            name = f"CORE-{side}-{level}"
            section = {"W": "CORE300-H", "E": "CORE300-HV"}.get(side, "CORE300")
            m.area(name, section, corners)
            core_names.append(name)

    # ---- thin infill walls in the ground storey, the end bays of lines A and E ----
    for ix in (0, 4):
        m.area(f"INFILL-{GRID_X[ix]}", "INFILL200" if ix == 0 else "PLATE15",
               [point_name(ix, 1, 0), point_name(ix, 2, 0), point_name(ix, 2, 1),
                point_name(ix, 1, 1)])

    # ---- floor slabs: every bay but the core; bay D3-E4 in two triangles ----
    slab_names = {}
    for level in range(1, top + 1):
        roof = level == top
        live = "ROOF" if roof else "LIVE"
        live_value = 1.0 if roof else 3.0
        for iy in range(len(YS) - 1):
            for ix in range(len(XS) - 1):
                if in_core_bay(ix, iy):
                    continue
                corners = [point_name(ix, iy, level), point_name(ix + 1, iy, level),
                           point_name(ix + 1, iy + 1, level), point_name(ix, iy + 1, level)]
                loads = [{"pattern": "SDEAD", "dir": 10, "value": 1.5},
                         {"pattern": live, "dir": 10, "value": live_value}]
                bay = f"{GRID_X[ix]}{iy + 1}"
                if (ix, iy) == (3, 2):
                    for part, tri in (("a", [corners[0], corners[1], corners[2]]),
                                      ("b", [corners[0], corners[2], corners[3]])):
                        name = f"SLAB-{bay}{part}-{level}"
                        m.area(name, "SLAB220", tri, uniform_loads=loads)
                        slab_names.setdefault(level, []).append(name)
                else:
                    name = f"SLAB-{bay}-{level}"
                    # A steel deck over the roof's first bay.
                    section = "DECK12" if roof and (ix, iy) == (0, 0) else "SLAB220"
                    m.area(name, section, corners, uniform_loads=loads)
                    slab_names.setdefault(level, []).append(name)

    # ---- a concrete strut from the foot of D4 to the first floor at E4 ----
    m.frame("STRUT-D4", "C500", point_name(3, 3, 0), point_name(4, 3, 1))

    # ---- the loading ramp from the yard up to the first floor ----
    m.area("RAMP", "RAMP250", ["RAMP-1", "RAMP-2", point_name(1, 0, 1), point_name(0, 0, 1)],
           uniform_loads=[{"pattern": "SDEAD", "dir": 10, "value": 1.0},
                          {"pattern": "LIVE", "dir": 10, "value": 5.0}],
           uniform_to_frame_loads=[{"pattern": "LIVE", "dir": 10, "value": 0.5,
                                    "dist_type": 2}])

    return m, column_names, core_names, slab_names


def functions():
    pulse = [[0.0, 0.0], [0.1, 0.35], [0.2, 1.0], [0.3, 0.35], [0.4, -0.45], [0.5, -0.6],
             [0.6, -0.2], [0.8, 0.1], [1.0, 0.0], [1.5, 0.0]]
    return [
        {"name": "EQ-SYNTH", "kind": 0,
         "file": {"path": "records/synthetic-quake.txt", "header_lines": 3,
                  "points_per_line": 5, "value_type": 1, "free_format": True,
                  "dt": RECORD_DT}},
        {"name": "PULSE", "kind": 1, "points": pulse},
        {"name": "SINE-1HZ", "kind": 2, "period": 1.0, "steps_per_cycle": 20, "cycles": 8,
         "amplitude": 0.25},
        {"name": "COS-2HZ", "kind": 3, "period": 0.5, "steps_per_cycle": 16, "cycles": 10,
         "amplitude": 0.15},
        {"name": "RAMP-UP", "kind": 4, "time": 2.0, "amplitude": 1.0, "max_time": 10.0},
        {"name": "SAWTOOTH", "kind": 5, "period": 0.8, "ramp_time": 0.1, "cycles": 6,
         "amplitude": 0.2},
        {"name": "TRIANGLE", "kind": 6, "period": 0.6, "cycles": 6, "amplitude": 0.2},
        {"name": "PERIODIC", "kind": 7, "cycles": 5,
         "points": [[0.0, 0.0], [0.2, 0.3], [0.4, 0.0], [0.6, -0.3], [0.8, 0.0]]},
        # A design spectrum: not a time history, so the transfer passes it by.
        {"name": "RS-DESIGN", "family": 1, "kind": 1,
         "points": [[0.0, 0.4], [0.15, 1.0], [0.5, 1.0], [2.0, 0.25], [4.0, 0.1]]},
    ]


def record_lines():
    """A synthetic ground motion: two decaying wave trains under a smooth envelope, in g."""
    values = []
    for k in range(RECORD_STEPS):
        t = k * RECORD_DT
        rise = min(1.0, t / 2.0) ** 2
        decay = math.exp(-0.25 * max(0.0, t - 6.0))
        envelope = rise * decay
        wave = (0.55 * math.sin(2 * math.pi * 1.1 * t) +
                0.30 * math.sin(2 * math.pi * 2.7 * t + 0.6) +
                0.15 * math.sin(2 * math.pi * 5.3 * t + 1.9))
        values.append(0.32 * envelope * wave)
    lines = ["Synthetic ground motion for the VaskToTrelk example office building",
             f"Acceleration in g, {RECORD_STEPS} values at a step of {RECORD_DT} s",
             "Five values a line, free format"]
    for start in range(0, len(values), 5):
        lines.append(" ".join(f"{v:10.6f}" for v in values[start:start + 5]))
    return "\n".join(lines) + "\n"


def dump(model):
    """The model as JSON with one list entry a line, so that a change shows as a line."""
    lines = ["{"]
    keys = list(model)
    for n, key in enumerate(keys):
        value = model[key]
        end = "," if n + 1 < len(keys) else ""
        if isinstance(value, list) and value:
            lines.append(f" {json.dumps(key)}: [")
            for k, item in enumerate(value):
                comma = "," if k + 1 < len(value) else ""
                lines.append("  " + json.dumps(item) + comma)
            lines.append(" ]" + end)
        else:
            lines.append(f" {json.dumps(key)}: {json.dumps(value)}{end}")
    lines.append("}")
    return "\n".join(lines) + "\n"


def main():
    m, column_names, core_names, slab_names = build()
    top = len(LEVELS) - 1
    monitored = point_name(2, 0, top)

    model = {
        "format": "vask-model",
        "version": 1,
        "units": 6,
        "materials": materials(),
        "frame_sections": frame_sections(),
        "area_sections": area_sections(),
        "points": m.points,
        "constraints": [{"name": f"FLOOR{level}", "type": 2, "axis": 3}
                        for level in range(1, top + 1)],
        "frames": m.frames,
        "areas": m.areas,
        "load_patterns": [
            {"name": "DEAD", "type": 1, "self_weight_multiplier": 1},
            {"name": "SDEAD", "type": 2},
            {"name": "LIVE", "type": 3},
            {"name": "ROOF", "type": 3},
            {"name": "WIND-X", "type": 6},
        ],
        "mass_source": {"option": 3, "loads": [{"pattern": "SDEAD", "factor": 1.0},
                                               {"pattern": "LIVE", "factor": 0.3}]},
        "functions": functions(),
        "groups": [
            {"name": "ALL", "assignments": []},
            {"name": "Ground columns",
             "assignments": [{"type": 2, "name": n} for level, n in column_names
                             if level == 1]},
            {"name": "Core walls", "assignments": [{"type": 5, "name": n} for n in core_names]},
            {"name": "Roof",
             "assignments": [{"type": 1, "name": p["name"]} for p in m.points
                             if p["z"] == LEVELS[top]] +
                            [{"type": 5, "name": n} for n in slab_names[top]]},
            {"name": "Steel",
             "assignments": [{"type": 2, "name": f["name"]} for f in m.frames
                             if f["section"] in ("IPE400", "SHS200x10")]},
            {"name": "Ramp",
             "assignments": [{"type": 5, "name": "RAMP"}, {"type": 1, "name": "RAMP-1"},
                             {"type": 1, "name": "RAMP-2"}]},
        ],
        "load_cases": [
            # Linear cases and the modal case: Trelk takes none of them.
            {"name": "DEAD", "type": 1, "loads": [{"type": "Load", "name": "DEAD"}]},
            {"name": "MODAL", "type": 3},
            # Nonlinear static, force controlled: gravity cases.
            {"name": "GRAVITY", "type": 2,
             "loads": [{"type": "Load", "name": "DEAD", "factor": 1.0},
                       {"type": "Load", "name": "SDEAD", "factor": 1.0},
                       {"type": "Load", "name": "LIVE", "factor": 0.3},
                       {"type": "Load", "name": "ROOF", "factor": 0.3}]},
            {"name": "GRAVITY-ULS", "type": 2,
             "loads": [{"type": "Load", "name": "DEAD", "factor": 1.35},
                       {"type": "Load", "name": "SDEAD", "factor": 1.35},
                       {"type": "Load", "name": "LIVE", "factor": 1.5}]},
            # Nonlinear static, displacement controlled: pushover cases.
            {"name": "PUSH-X", "type": 2,
             "load_application": {"control": 2, "displacement": 0.65, "monitored_dof": 1,
                                  "monitored_point": monitored},
             "loads": [{"type": "Accel", "name": "UX", "factor": -1.0}]},
            {"name": "PUSH-Y", "type": 2,
             "load_application": {"control": 2, "displacement": 0.65, "monitored_dof": 2,
                                  "monitored_point": monitored},
             "loads": [{"type": "Accel", "name": "UY", "factor": -1.0}]},
            {"name": "PUSH-MODE1", "type": 2,
             "load_application": {"control": 2, "displacement": 0.65, "monitored_dof": 1,
                                  "monitored_point": monitored},
             "loads": [{"type": "Mode", "name": "1", "factor": 1.0}]},
            {"name": "PUSH-WIND", "type": 2,
             "load_application": {"control": 2, "displacement": 0.4, "monitored_dof": 1,
                                  "monitored_point": monitored},
             "loads": [{"type": "Load", "name": "WIND-X", "factor": 1.0}]},
            # Nonlinear direct-integration histories: dynamic earthquake cases.
            {"name": "TH-SYNTH", "type": 8,
             "loads": [{"type": "Accel", "name": "U1", "function": "EQ-SYNTH",
                        "factor": 9.81},
                       {"type": "Accel", "name": "U2", "function": "EQ-SYNTH",
                        "factor": 2.943},
                       {"type": "Accel", "name": "U3", "function": "PULSE",
                        "factor": 1.0}],
             "time_step": {"steps": RECORD_STEPS, "size": RECORD_DT},
             "damping": {"type": 2, "values": [0.1, 1.2], "ratios": [0.05, 0.05]}},
            {"name": "TH-PULSE", "type": 8,
             "loads": [{"type": "Accel", "name": "U1", "function": "PULSE", "factor": 4.905,
                        "time_factor": 1.5}],
             "time_step": {"steps": 300, "size": 0.01},
             "damping": {"type": 3, "values": [5.0, 0.8], "ratios": [0.05, 0.04]}},
            # A modal history: Trelk takes only direct-integration histories.
            {"name": "TH-MODAL", "type": 6,
             "loads": [{"type": "Accel", "name": "U1", "function": "SINE-1HZ",
                        "factor": 9.81}],
             "time_step": {"steps": 800, "size": 0.01}},
        ],
    }

    RECORD.parent.mkdir(parents=True, exist_ok=True)
    RECORD.write_text(record_lines(), encoding="ascii", newline="\n")
    MODEL.write_text(dump(model), encoding="utf-8", newline="\n")
    print(f"wrote {MODEL.relative_to(HERE.parent)} ({len(m.points)} points, "
          f"{len(m.frames)} frames, {len(m.areas)} areas) and "
          f"{RECORD.relative_to(HERE.parent)}")


if __name__ == "__main__":
    main()
