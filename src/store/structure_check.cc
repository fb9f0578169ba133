#include "store/structure_check.h"

#include <fmt/format.h>

#include "store/compound_records.h"
#include "store/drift_records.h"
#include "store/element_records.h"
#include "store/load_case_records.h"
#include "store/load_records.h"
#include "store/node_records.h"
#include "store/section_cut_records.h"
#include "store/trelk_store.h"

namespace vtt {
namespace {

constexpr std::string_view kVersionText = "4.0     ";

// A field's name as the dump shows it: an entry of a part or slot table with its number.
std::string FieldName(const ReadRecord& r, const FieldDef& field) {
  if (r.layout != nullptr) {
    for (std::size_t i = 0; i < r.layout->fields.size(); ++i) {
      const FieldDef& f = r.layout->fields[i];
      if (f.offset == field.offset && f.name == field.name) {
        return FieldDisplayName(r.layout->fields, i);
      }
    }
  }
  return std::string(field.name);
}

class Checker {
 public:
  explicit Checker(std::vector<CheckProblem>& problems) : problems_(problems) {}

  void Fail(const ReadFile& file, std::uint64_t offset, std::string text) {
    problems_.push_back({file.name, offset, std::move(text)});
  }

  // A field of a record that must lie in lo..hi.
  void InRange(const ReadFile& file, const ReadRecord& r, const FieldDef& field, std::int64_t lo,
               std::int64_t hi, std::string_view of_what) {
    const std::int64_t v = r.Int(field);
    if (v < lo || v > hi) {
      Fail(file, r.offset + field.offset,
           fmt::format("{} {} {} is {}; expected {} from {} to {}", r.record, r.index,
                       FieldName(r, field), v, of_what, lo, hi));
    }
  }

  void Equals(const ReadFile& file, const ReadRecord& r, const FieldDef& field,
              std::int64_t expected) {
    const std::int64_t v = r.Int(field);
    if (v != expected) {
      Fail(file, r.offset + field.offset,
           fmt::format("{} {} {} is {}; expected {}", r.record, r.index, FieldName(r, field), v,
                       expected));
    }
  }

 private:
  std::vector<CheckProblem>& problems_;
};

// The files as walked: truncation, content the reader cannot walk, bytes behind the end.
void CheckWalk(Checker& c, const ReadFile& f) {
  if (f.missing) {
    c.Fail(f, 0, "the file is missing");
    return;
  }
  if (f.truncated) {
    c.Fail(f, f.truncated->size,
           fmt::format("the file ends at offset {} inside {}: expected {} bytes from offset {}",
                       f.truncated->size, f.truncated->what, f.truncated->needed,
                       f.truncated->offset));
  }
  for (const std::string& u : f.unreadable) c.Fail(f, f.end, "cannot be read further: " + u);
  if (!f.truncated && f.unreadable.empty() && f.size > f.end) {
    c.Fail(f, f.end,
           fmt::format("{} bytes after the end of the content at offset {}: left by an older, "
                       "longer file; expected the file to end there",
                       f.size - f.end, f.end));
  }
  const ReadSection* head = f.Section("header");
  const ReadValue* version = head != nullptr ? head->Find("VersionText") : nullptr;
  if (version != nullptr && version->text != kVersionText) {
    c.Fail(f, version->offset,
           fmt::format("VersionText is \"{}\"; expected \"4.0\" and five spaces", version->text));
  }
}

// Header values that must be zero, and count-capacity pairs.
void CheckZeroValues(Checker& c, const ReadFile& f, const ReadSection& s) {
  for (const ReadValue& v : s.values) {
    if (v.name.rfind("ZeroWord", 0) == 0 || v.name == "ZeroLong") {
      if (v.integer != 0) {
        c.Fail(f, v.offset, fmt::format("{} of {} is {}; expected 0", v.name, s.name, v.integer));
      }
    }
  }
}

void CountWithin(Checker& c, const ReadFile& f, const ReadSection* s, std::string_view count,
                 std::string_view capacity) {
  if (s == nullptr) return;
  const ReadValue* n = s->Find(count);
  const ReadValue* cap = s->Find(capacity);
  if (n == nullptr || cap == nullptr) return;
  if (n->integer < 0) {
    c.Fail(f, n->offset, fmt::format("{} is {}; expected 0 or more", count, n->integer));
  } else if (n->integer > cap->integer) {
    c.Fail(f, n->offset,
           fmt::format("{} is {}; expected at most {} ({})", count, n->integer, capacity,
                       cap->integer));
  }
}

std::int64_t ComponentCount(const ReadFile& s_file, std::string_view record) {
  const ReadSection* sec = s_file.Section(record);
  return sec == nullptr ? 0 : sec->Value("Count");
}

void CheckNodes(Checker& c, const ReadFile& f, std::int64_t diaphragms) {
  const ReadSection* s = f.Section("nodes");
  if (s == nullptr) return;
  const std::int64_t count = s->Value("NodeCount");
  if (const ReadValue* v = s->Find("NodeCount"); v && count < 1) {
    c.Fail(f, v->offset, fmt::format("NodeCount is {}; expected 1 or more", count));
  }
  const auto nodes = s->Records("TrelkNodeRec");
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const ReadRecord& r = *nodes[i];
    const auto k = static_cast<std::int64_t>(i + 1);
    c.Equals(f, r, node_rec::PrevNode, k - 1);
    c.Equals(f, r, node_rec::NextNode, k == count ? 0 : k + 1);
    for (const FieldDef& slave : {node_rec::SlavedUX, node_rec::SlavedUY, node_rec::SlavedRZ}) {
      c.InRange(f, r, slave, 0, diaphragms, "a diaphragm number or 0");
    }
    for (const FieldDef& zero : {node_rec::SlavedUZ, node_rec::SlavedRX, node_rec::SlavedRY}) {
      c.Equals(f, r, zero, 0);
    }
  }
}

// The list that a compound part, a wall section or an element refers to, by its source and
// kind codes; empty when the codes name no list this program fills.
std::string_view PartList(std::int64_t source, std::int64_t kind) {
  if (source == 3 && (kind == 3 || kind == 4)) return "TrelkXecBeamRec";
  if (source == 3 && (kind == 6 || kind == 7)) return "TrelkXecColumnRec";
  if (source == 1 && (kind == 1 || kind == 2)) return "TrelkIneFemaBeamRec";
  if (source == 1 && (kind == 14 || kind == 15)) return "TrelkIneFemaColumnRec";
  if (source == 2 && kind == 4) return "TrelkReleaseRec";
  return {};
}

std::string_view ElementList(std::int64_t source, std::int64_t kind) {
  if (source == 6 && kind == 2) return "TrelkCpdFrameRec";
  if (source == 6 && kind == 3) return "TrelkCpdWallRec";
  if (source == 6 && kind == 4) return "TrelkCpdGWallRec";
  if (source == 3 && kind == 8) return "TrelkXecSlabRec";
  return {};
}

std::string_view WallSectionList(std::int64_t kind) {
  if (kind == 10 || kind == 12) return "TrelkXecWallInelRec";
  if (kind == 11 || kind == 13) return "TrelkXecWallElasticRec";
  return {};
}

void Reference(Checker& c, const ReadFile& f, const ReadRecord& r, const FieldDef& field,
               std::string_view list, std::string_view codes) {
  if (list.empty()) {
    c.Fail(f, r.offset + field.offset,
           fmt::format("{} {} {}: no component list for {}", r.record, r.index,
                       FieldName(r, field), codes));
    return;
  }
  // A list that the walk did not reach (the file ends early) cannot be checked against.
  const ReadSection* target = f.Section(list);
  if (target == nullptr || target->Find("Count") == nullptr) return;
  c.InRange(f, r, field, 1, ComponentCount(f, list), fmt::format("a number of {}", list));
}

void CheckElements(Checker& c, const ReadFile& f, std::int64_t nodes) {
  const ReadSection* gs = f.Section("element groups");
  const ReadSection* es = f.Section("elements");
  if (gs == nullptr || es == nullptr) return;
  const std::int64_t group_count = gs->Value("ElemGroupCount");
  const std::int64_t elem_count = es->Value("ElemCount");
  if (const ReadValue* last = gs->Find("ElemGroupLast"); last && last->integer != group_count) {
    c.Fail(f, last->offset,
           fmt::format("ElemGroupLast is {}; expected ElemGroupCount {}", last->integer,
                       group_count));
  }
  if (const ReadValue* last = es->Find("ElemLast"); last && last->integer != elem_count) {
    c.Fail(f, last->offset,
           fmt::format("ElemLast is {}; expected ElemCount {}", last->integer, elem_count));
  }
  const auto groups = gs->Records("TrelkElemGroupRec");
  const auto elems = es->Records("TrelkElemRec");
  for (std::size_t g = 0; g < groups.size(); ++g) {
    const ReadRecord& gr = *groups[g];
    const std::int64_t first = gr.Int(elem_group_rec::FirstElem);
    const std::int64_t last = gr.Int(elem_group_rec::LastElem);
    c.InRange(f, gr, elem_group_rec::FirstElem, 1, elem_count, "an element number");
    if (last < first) {
      c.Fail(f, gr.offset + elem_group_rec::LastElem.offset,
             fmt::format("TrelkElemGroupRec {} LastElem is {}; expected {} (FirstElem) or more",
                         gr.index, last, first));
    }
    // A file that ends early holds fewer records than its count; look only at those read.
    const auto read = static_cast<std::int64_t>(elems.size());
    if (first < 1 || first > read) continue;
    // The leading record stands for no source object.
    const ReadRecord& lead = *elems[static_cast<std::size_t>(first - 1)];
    c.Equals(f, lead, elem_rec::GroupNumber, 0);
    c.Equals(f, lead, elem_rec::ElemKind, 6);
    std::int64_t stop = std::min(last, read);
    if (g + 1 < groups.size()) {
      stop = std::min(stop, groups[g + 1]->Int(elem_group_rec::FirstElem) - 1);
    }
    for (std::int64_t e = first + 1; e <= stop; ++e) {
      c.Equals(f, *elems[static_cast<std::size_t>(e - 1)], elem_rec::GroupNumber,
               static_cast<std::int64_t>(g + 1));
    }
  }
  for (std::size_t i = 0; i < elems.size(); ++i) {
    const ReadRecord& r = *elems[i];
    const auto e = static_cast<std::int64_t>(i + 1);
    const std::int64_t next = r.Int(elem_rec::NextElem);
    if (next != 0 && next != e + 1) {
      c.Fail(f, r.offset + elem_rec::NextElem.offset,
             fmt::format("TrelkElemRec {} NextElem is {}; expected {} or 0", e, next, e + 1));
    }
    if (r.Int(elem_rec::GroupNumber) == 0) continue;
    c.InRange(f, r, elem_rec::GroupNumber, 1, group_count, "an element group number");
    c.InRange(f, r, elem_rec::Node1, 1, nodes, "a node number");
    c.InRange(f, r, elem_rec::Node2, 1, nodes, "a node number");
    c.InRange(f, r, elem_rec::Node3, 0, nodes, "a node number or 0");
    c.InRange(f, r, elem_rec::Node4, 0, nodes, "a node number or 0");
    const std::int64_t source = r.Int(elem_rec::ComponentSource);
    const std::int64_t kind = r.Int(elem_rec::ComponentKind);
    Reference(c, f, r, elem_rec::Component, ElementList(source, kind),
              fmt::format("ComponentSource {} and ComponentKind {}", source, kind));
  }
}

// A compound carries its own record number twice.
template <typename Layout>
void CheckOwnNumber(Checker& c, const ReadFile& f, const ReadRecord& r) {
  const std::int64_t number = std::stoll(r.index);
  c.Equals(f, r, Layout::ComponentNumber, number);
  c.Equals(f, r, Layout::ComponentNumberCopy, number);
}

struct CpdFrameNumbers {
  static constexpr FieldDef ComponentNumber = cpd_frame_rec::ComponentNumber;
  static constexpr FieldDef ComponentNumberCopy = cpd_frame_rec::ComponentNumberCopy;
};
struct CpdWallNumbers {
  static constexpr FieldDef ComponentNumber = cpd_wall_rec::ComponentNumber;
  static constexpr FieldDef ComponentNumberCopy = cpd_wall_rec::ComponentNumberCopy;
};

void CheckCompounds(Checker& c, const ReadFile& f) {
  if (const ReadSection* s = f.Section("TrelkCpdFrameRec")) {
    for (const ReadRecord* r : s->Records("TrelkCpdFrameRec")) {
      CheckOwnNumber<CpdFrameNumbers>(c, f, *r);
      c.InRange(f, *r, cpd_frame_rec::PartCount, 1, cpd_frame_rec::kMaxParts, "a part count");
      const std::int64_t parts = std::min<std::int64_t>(r->Int(cpd_frame_rec::PartCount),
                                                        cpd_frame_rec::kMaxParts);
      for (int k = 1; k <= parts; ++k) {
        const std::int64_t source = r->Int(cpd_frame_rec::PartSource(k));
        const std::int64_t kind = r->Int(cpd_frame_rec::PartKind(k));
        Reference(c, f, *r, cpd_frame_rec::PartComponent(k), PartList(source, kind),
                  fmt::format("part {}: PartSource {} and PartKind {}", k, source, kind));
      }
    }
  }
  if (const ReadSection* s = f.Section("TrelkCpdWallRec")) {
    for (const ReadRecord* r : s->Records("TrelkCpdWallRec")) {
      CheckOwnNumber<CpdWallNumbers>(c, f, *r);
      const std::int64_t kind = r->Int(cpd_wall_rec::WallSectionKind);
      Reference(c, f, *r, cpd_wall_rec::WallSection, WallSectionList(kind),
                fmt::format("WallSectionKind {}", kind));
      const std::int64_t shear = r->Int(cpd_wall_rec::ShearMaterialKind);
      Reference(c, f, *r, cpd_wall_rec::ShearMaterial,
                shear == 5 ? "TrelkMatElasticShearRec" : "",
                fmt::format("ShearMaterialKind {}", shear));
    }
  }
  if (const ReadSection* s = f.Section("TrelkCpdGWallRec")) {
    for (const ReadRecord* r : s->Records("TrelkCpdGWallRec")) {
      c.Equals(f, *r, cpd_gwall_rec::ComponentNumber, std::stoll(r->index));
      const std::int64_t vertical = r->Int(cpd_gwall_rec::VerticalSectionKind);
      Reference(c, f, *r, cpd_gwall_rec::VerticalSection, WallSectionList(vertical),
                fmt::format("VerticalSectionKind {}", vertical));
      const std::int64_t horizontal = r->Int(cpd_gwall_rec::HorizontalSectionKind);
      Reference(c, f, *r, cpd_gwall_rec::HorizontalSection, WallSectionList(horizontal),
                fmt::format("HorizontalSectionKind {}", horizontal));
      const std::int64_t shear = r->Int(cpd_gwall_rec::ShearMaterialKind);
      Reference(c, f, *r, cpd_gwall_rec::ShearMaterial, shear == 2 ? "TrelkMatInelRec" : "",
                fmt::format("ShearMaterialKind {}", shear));
    }
  }
}

void CheckLoadsAndCuts(Checker& c, const ReadFile& f, std::int64_t nodes, std::int64_t elems) {
  if (const ReadSection* s = f.Section("frame loads")) {
    const std::int64_t values = s->Value("LoadFrameValueCount");
    for (const ReadRecord* r : s->Records("TrelkLoadFrameValueRec")) {
      c.InRange(f, *r, load_frame_value_rec::NextItem, 0, values, "a frame load item or 0");
    }
    const auto items = s->Records("TrelkLoadFrameValueRec");
    const std::int64_t slots = s->Value("LoadFrameValueSlotCapacity");
    for (const ReadRecord* r : s->Records("TrelkLoadFrameGroupValueRec")) {
      c.InRange(f, *r, load_frame_group_value_rec::FirstItem, 0, values, "a frame load item or 0");
      // The items of a subgroup are a chain of ItemCount records that ends in 0.
      const std::int64_t count = r->Int(load_frame_group_value_rec::ItemCount);
      std::int64_t item = r->Int(load_frame_group_value_rec::FirstItem);
      for (std::int64_t k = 1; k <= count; ++k) {
        if (item < 1 || item > static_cast<std::int64_t>(items.size())) break;
        const ReadRecord& it = *items[static_cast<std::size_t>(item - 1)];
        const std::int64_t next = it.Int(load_frame_value_rec::NextItem);
        if (k == count && next != 0) {
          c.Fail(f, it.offset + load_frame_value_rec::NextItem.offset,
                 fmt::format("TrelkLoadFrameValueRec {} NextItem is {}; expected 0 on the last "
                             "item of subgroup {}",
                             item, next, r->index));
        }
        item = next;
      }
    }
    for (std::string_view index : {"TrelkLoadFrameGroupIndex", "TrelkLoadFrameElemIndex"}) {
      for (const ReadRecord* r : s->Records(index)) {
        c.InRange(f, *r, load_frame_index::Value, 0, slots, "a subgroup number or 0");
      }
    }
  }
  const ReadSection* members = f.Section("cut members");
  const std::int64_t member_count = members != nullptr ? members->Value("CutMemberCount") : 0;
  // The member list follows the cuts: without its count (the file ends before it) the
  // cuts cannot be checked against it.
  const bool members_counted = members != nullptr && members->Find("CutMemberCount") != nullptr;
  if (const ReadSection* s = f.Section("section cuts"); s != nullptr && members_counted) {
    for (const ReadRecord* r : s->Records("TrelkSectionCutRec")) {
      c.InRange(f, *r, section_cut_rec::FirstMember, 1, member_count, "a cut member number");
      c.InRange(f, *r, section_cut_rec::LastMember, r->Int(section_cut_rec::FirstMember),
                member_count, "a cut member number");
    }
  }
  if (const ReadSection* s = f.Section("section cuts"); s != nullptr && members != nullptr) {
    // The members of a cut run from its head entry to its last, each naming the next.
    const auto list = members->Records("TrelkCutMemberRec");
    for (const ReadRecord* r : s->Records("TrelkSectionCutRec")) {
      const std::int64_t first = r->Int(section_cut_rec::FirstMember);
      const std::int64_t last = r->Int(section_cut_rec::LastMember);
      if (first < 1 || last > static_cast<std::int64_t>(list.size())) continue;
      for (std::int64_t k = first; k <= last; ++k) {
        c.Equals(f, *list[static_cast<std::size_t>(k - 1)], cut_member_rec::Next,
                 k == last ? 0 : k + 1);
      }
    }
  }
  if (members != nullptr) {
    for (const ReadRecord* r : members->Records("TrelkCutMemberRec")) {
      c.InRange(f, *r, cut_member_rec::Elem, 0, elems, "an element number or 0");
      c.InRange(f, *r, cut_member_rec::Next, 0, member_count, "a cut member number or 0");
    }
  }
  if (const ReadSection* s = f.Section("cut groups")) {
    const ReadSection* cuts = f.Section("section cuts");
    const std::int64_t cut_count = cuts != nullptr ? cuts->Value("SectionCutCount") : 0;
    for (const ReadRecord* r : s->Records("TrelkCutGroupRec")) {
      c.InRange(f, *r, cut_group_rec::CutCount, 0, cut_count, "a number of section cuts");
    }
  }
  if (const ReadSection* s = f.Section("drifts")) {
    for (const ReadRecord* r : s->Records("TrelkDriftRec")) {
      c.InRange(f, *r, drift_rec::TopNode, 1, nodes, "a node number");
      c.InRange(f, *r, drift_rec::BottomNode, 1, nodes, "a node number");
    }
  }
}

void CheckSFile(Checker& c, const ReadFile& f) {
  const ReadSection* head = f.Section("header");
  if (head != nullptr) {
    if (const ReadValue* w = head->Find("HeaderWord2"); w && w->integer != 1) {
      c.Fail(f, w->offset, fmt::format("HeaderWord2 is {}; expected 1", w->integer));
    }
  }
  CountWithin(c, f, f.Section("nodes"), "NodeCount", "NodeCapacity");
  CountWithin(c, f, f.Section("diaphragms"), "DiaphragmCount", "DiaphragmCapacity");
  CountWithin(c, f, f.Section("nodal mass"), "MassPatternCount", "MassPatternCapacity");
  CountWithin(c, f, f.Section("element groups"), "ElemGroupCount", "ElemGroupCapacity");
  CountWithin(c, f, f.Section("elements"), "ElemCount", "ElemCapacity");
  CountWithin(c, f, f.Section("structure frames"), "FrameCount", "FrameCapacity");
  CountWithin(c, f, f.Section("nodal loads"), "LoadNodePatternCount", "LoadNodePatternCapacity");
  CountWithin(c, f, f.Section("frame loads"), "LoadFramePatternCount", "LoadFramePatternCapacity");
  CountWithin(c, f, f.Section("frame loads"), "LoadFrameValueCount", "LoadFrameValueCapacity");
  CountWithin(c, f, f.Section("self weight"), "SelfWeightPatternCount",
              "SelfWeightPatternCapacity");
  CountWithin(c, f, f.Section("section cuts"), "SectionCutCount", "SectionCutCapacity");
  CountWithin(c, f, f.Section("cut members"), "CutMemberCount", "CutMemberCapacity");
  CountWithin(c, f, f.Section("cut groups"), "CutGroupCount", "CutGroupCapacity");
  CountWithin(c, f, f.Section("drifts"), "DriftCount", "DriftCapacity");
  CountWithin(c, f, f.Section("drifts"), "DeflectionCount", "DeflectionCapacity");
  for (int k = 1; k <= 10; ++k) {
    CountWithin(c, f, f.Section("limit states"), fmt::format("LimitStateCount({})", k),
                fmt::format("LimitStateCapacity({})", k));
  }
  for (const ReadSection& s : f.sections) CheckZeroValues(c, f, s);

  const ReadSection* nodes = f.Section("nodes");
  const ReadSection* diaphragms = f.Section("diaphragms");
  const ReadSection* elems = f.Section("elements");
  const std::int64_t node_count = nodes != nullptr ? nodes->Value("NodeCount") : 0;
  const std::int64_t elem_count = elems != nullptr ? elems->Value("ElemCount") : 0;
  CheckNodes(c, f, diaphragms != nullptr ? diaphragms->Value("DiaphragmCount") : 0);
  CheckElements(c, f, node_count);
  CheckCompounds(c, f);
  if (const ReadSection* lib = f.Section("component library")) {
    const ReadValue* max = lib->Find("MaxComponentCount");
    for (const ComponentListInfo& info : ComponentLibraryLayout()) {
      const ReadSection* list = f.Section(info.record);
      if (max == nullptr || list == nullptr) continue;
      if (const ReadValue* count = list->Find("Count"); count && count->integer > max->integer) {
        c.Fail(f, count->offset,
               fmt::format("the count of {} is {}; expected at most MaxComponentCount {}",
                           info.record, count->integer, max->integer));
      } else if (count && count->integer < 0) {
        c.Fail(f, count->offset, fmt::format("the count of {} is {}; expected 0 or more",
                                             info.record, count->integer));
      }
    }
  }
  CheckLoadsAndCuts(c, f, node_count, elem_count);
}

void CheckLFile(Checker& c, const ReadFile& f) {
  const ReadSection* head = f.Section("header");
  for (int k = 1; k <= 20; ++k) {
    CountWithin(c, f, head, fmt::format("CaseListCount({})", k),
                fmt::format("CaseListCapacity({})", k));
  }
  // A transfer keeps at most twenty cases of each kind and fills no other case list.
  if (head != nullptr) {
    for (int k = 1; k <= 20; ++k) {
      const ReadValue* v = head->Find(fmt::format("CaseListCount({})", k));
      const std::int64_t most = k <= 3 ? 20 : 0;
      if (v != nullptr && v->integer > most) {
        c.Fail(f, v->offset, fmt::format("{} is {}; expected at most {}", v->name, v->integer,
                                         most));
      }
    }
  }
  if (const ReadSection* s = f.Section("gravity cases")) {
    for (const ReadRecord* r : s->Records("TrelkGravityCaseRec")) {
      c.InRange(f, *r, gravity_case_rec::LoadCount, 0, gravity_case_rec::kMaxLoads,
                "a load count");
    }
  }
  if (const ReadSection* s = f.Section("pushover cases")) {
    for (const ReadRecord* r : s->Records("TrelkPushoverCaseRec")) {
      c.InRange(f, *r, pushover_case_rec::LoadCount, 0, pushover_case_rec::kMaxLoads,
                "a load count");
    }
  }
}

// The series entry of the A file follows from the cases of the L file: one entry when a
// dynamic or a pushover case exists, a history series ahead of a pushover series.
void CheckSeriesAgainstCases(Checker& c, const ReadFile& a, const ReadFile& l) {
  const ReadSection* l_head = l.Section("header");
  const ReadSection* a_head = a.Section("header");
  if (l_head == nullptr || a_head == nullptr) return;
  if (l_head->Find("CaseListCount(3)") == nullptr) return;
  const std::int64_t pushover = l_head->Value("CaseListCount(2)");
  const std::int64_t dynamic = l_head->Value("CaseListCount(3)");
  const std::string cases = fmt::format("TRKDL holds {} dynamic and {} pushover cases", dynamic,
                                        pushover);
  const std::int64_t expected = dynamic > 0 || pushover > 0 ? 1 : 0;
  if (const ReadValue* count = a_head->Find("LoadCaseCount"); count && count->integer != expected) {
    c.Fail(a, count->offset,
           fmt::format("LoadCaseCount is {}; expected {}: {}", count->integer, expected, cases));
  }
  const ReadSection* entries = a.Section("load cases");
  if (entries == nullptr || expected == 0) return;
  const auto records = entries->Records("TrelkLoadCaseRec");
  if (records.empty()) return;
  const std::string name = records[0]->Fields().at(0).text;
  const std::string series = dynamic > 0 ? "DynaAnalysis" : "PushAnalysis";
  if (name != series) {
    c.Fail(a, records[0]->offset + load_case_rec::Name.offset,
           fmt::format("TrelkLoadCaseRec 1 Name is \"{}\"; expected \"{}\": {}", name, series,
                       cases));
  }
}

void CheckAFile(Checker& c, const ReadFile& f) {
  // No series entry of a transfer carries a detail record.
  if (const ReadSection* s = f.Section("load cases")) {
    for (const ReadRecord* r : s->Records("TrelkLoadCaseRec")) {
      c.Equals(f, *r, load_case_rec::HasDetail, 0);
    }
  }
  const ReadSection* head = f.Section("header");
  if (head == nullptr) return;
  for (std::string_view name : {"LoadCaseCount", "LoadCaseMatrixRows", "LoadCaseMatrixColumns"}) {
    if (const ReadValue* v = head->Find(name); v && v->integer < 0) {
      c.Fail(f, v->offset, fmt::format("{} is {}; expected 0 or more", name, v->integer));
    }
  }
}

// The fixed files hold zeros behind the version text.
void CheckZeroRecords(Checker& c, const ReadFile& f) {
  for (const ReadSection& s : f.sections) {
    for (const ReadRecord& r : s.records) {
      for (std::size_t i = 0; i < r.bytes.size(); ++i) {
        if (r.bytes[i] != 0) {
          c.Fail(f, r.offset + i,
                 fmt::format("{} holds the byte {} at {}; expected zero bytes", r.record,
                             r.bytes[i], i));
          break;
        }
      }
    }
  }
}

}  // namespace

std::vector<CheckProblem> CheckStructure(const StructureRead& structure) {
  std::vector<CheckProblem> problems;
  Checker c(problems);
  const ReadFile* s_file = structure.File("S");
  // The name that the other files are compared with; none when the S file ends before it.
  const ReadValue* name = nullptr;
  if (s_file != nullptr) {
    if (const ReadSection* h = s_file->Section("header")) name = h->Find("StructureName");
  }
  for (const ReadFile& f : structure.files) {
    CheckWalk(c, f);
    if (f.missing) continue;
    // The S, L and A files carry the same structure name.
    if (const ReadSection* h = f.Section("header")) {
      if (const ReadValue* v = h->Find("StructureName"); v && name && v->text != name->text) {
        c.Fail(f, v->offset, fmt::format("StructureName is \"{}\"; expected \"{}\" as in TRKDS",
                                         v->text, name->text));
      }
    }
    if (f.name == "TRKDS") CheckSFile(c, f);
    if (f.name == "TRKDL") CheckLFile(c, f);
    if (f.name == "TRKDA") CheckAFile(c, f);
    if (f.name == "TRKDPO" || f.name == "TRKDPOF") CheckZeroRecords(c, f);
    if (f.name == "TRKDA") {
      const ReadFile* l_file = structure.File("L");
      if (l_file != nullptr && !l_file->missing) CheckSeriesAgainstCases(c, f, *l_file);
    }
  }
  return problems;
}

std::vector<CheckProblem> CheckStructureFolder(const std::filesystem::path& folder) {
  return CheckStructure(ReadStructureFolder(folder));
}

std::string ProblemText(const CheckProblem& problem) {
  return fmt::format("{} at offset {}: {}", problem.file, problem.offset, problem.text);
}

}  // namespace vtt
