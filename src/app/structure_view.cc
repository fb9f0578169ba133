#include "app/structure_view.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <exception>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
#include <numbers>
#include <span>

#include <fmt/format.h>

#include "app/cli.h"
#include "hosts/json_model_host.h"
#include "store/binary_writer.h"
#include "store/drift_records.h"
#include "store/element_records.h"
#include "store/node_records.h"
#include "store/text_encoding.h"
#include "store/trelk_store.h"
#include "transfer/driver.h"
#include "transfer/failure.h"
#include "transfer/messages.h"

namespace vtt {
namespace {

namespace fs = std::filesystem;

// A text field without its blank padding and zero bytes, as the user reads it.
std::string FieldText(const ReadRecord& r, const FieldDef& field) {
  if (r.bytes.size() < field.offset + field.width) return {};
  std::string text(r.bytes.begin() + field.offset, r.bytes.begin() + field.offset + field.width);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\0')) text.pop_back();
  return FromWindows1252(text);
}

std::string XmlEscaped(std::string_view text) {
  std::string out;
  for (char c : text) {
    switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '"': out += "&quot;"; break;
      default: out += c;
    }
  }
  return out;
}

StructureGeometry::Node NodeOf(const ReadRecord& r) {
  StructureGeometry::Node n;
  n.x = static_cast<float>(r.Real(node_rec::X));
  n.y = static_cast<float>(r.Real(node_rec::Y));
  n.z = static_cast<float>(r.Real(node_rec::Z));
  n.support = static_cast<std::uint8_t>(r.Int(node_rec::SupportKind));
  n.diaphragm = static_cast<std::int32_t>(r.Int(node_rec::SlavedUX));
  return n;
}

StructureGeometry::Drift DriftOf(const ReadRecord& r) {
  return {FieldText(r, drift_rec::Name), static_cast<std::int32_t>(r.Int(drift_rec::TopNode)),
          static_cast<std::int32_t>(r.Int(drift_rec::BottomNode))};
}

// The group number of an element record; a group's leading element has 0.
std::int64_t ElementGroup(std::span<const std::uint8_t> bytes) {
  return ReadI16(bytes, elem_rec::GroupNumber.offset);
}

std::array<std::int32_t, 4> ElementNodes(std::span<const std::uint8_t> bytes) {
  return {ReadI32(bytes, elem_rec::Node1.offset), ReadI32(bytes, elem_rec::Node2.offset),
          ReadI32(bytes, elem_rec::Node3.offset), ReadI32(bytes, elem_rec::Node4.offset)};
}

// Element records read back from the file a chunk at a time.
constexpr std::int64_t kElementsPerRead = 4096;

// Calls `draw` with the nodes of each element of group `gi`, in file order: from the
// groups when they hold their elements, else from the S file, reading only the records
// from the group's first element to its last.
template <class Draw>
void ForEachElement(const StructureGeometry& g, std::size_t gi, Draw draw) {
  if (!g.element_records) {
    for (const auto& e : g.groups[gi].elements) draw(e);
    return;
  }
  const StructureGeometry::ElementRecords& records = *g.element_records;
  if (records.elements[gi] == 0) return;
  std::ifstream in(records.file, std::ios::binary);
  const std::int64_t first = records.first[gi];
  const std::int64_t last = records.last[gi];
  in.seekg(static_cast<std::streamoff>(records.offset +
                                       static_cast<std::uint64_t>(first - 1) * elem_rec::kSize));
  std::vector<std::uint8_t> chunk;
  const auto group = static_cast<std::int64_t>(gi + 1);
  for (std::int64_t at = first; at <= last && in; at += kElementsPerRead) {
    const std::int64_t n = std::min(kElementsPerRead, last - at + 1);
    chunk.resize(static_cast<std::size_t>(n) * elem_rec::kSize);
    in.read(reinterpret_cast<char*>(chunk.data()), static_cast<std::streamsize>(chunk.size()));
    const auto got = static_cast<std::size_t>(in.gcount()) / elem_rec::kSize;
    for (std::size_t k = 0; k < got; ++k) {
      const std::span<const std::uint8_t> bytes(chunk.data() + k * elem_rec::kSize,
                                                elem_rec::kSize);
      if (ElementGroup(bytes) == group) draw(ElementNodes(bytes));
    }
  }
}

// Takes from the S file what the picture needs, one record at a time.
class GeometrySink : public RecordSink {
 public:
  GeometrySink(StructureGeometry& g, const fs::path& file) : g_(g) {
    g_.element_records = StructureGeometry::ElementRecords{};
    g_.element_records->file = file;
  }

  bool Wants(std::string_view section) const override {
    return section == "nodes" || section == "element groups" || section == "elements" ||
           section == "drifts";
  }

  void Take(const ReadSection& section, const ReadRecord& r) override {
    if (r.record == "TrelkNodeRec") {
      if (g_.nodes.empty()) g_.nodes.reserve(Count(section, "NodeCount"));
      g_.nodes.push_back(NodeOf(r));
    } else if (r.record == "TrelkElemGroupRec") {
      g_.groups.push_back({FieldText(r, elem_group_rec::Name), {}});
      StructureGeometry::ElementRecords& e = *g_.element_records;
      e.elements.push_back(0);
      e.first.push_back(0);
      e.last.push_back(0);
    } else if (r.record == "TrelkElemRec") {
      StructureGeometry::ElementRecords& e = *g_.element_records;
      if (e.count == 0) e.offset = r.offset;
      ++e.count;
      const std::int64_t group = ElementGroup(r.bytes);
      if (group < 1 || static_cast<std::size_t>(group) > g_.groups.size()) return;
      const auto gi = static_cast<std::size_t>(group - 1);
      if (e.elements[gi]++ == 0) e.first[gi] = e.count;
      e.last[gi] = e.count;
    } else if (r.record == "TrelkDriftRec") {
      g_.drifts.push_back(DriftOf(r));
    }
  }

  bool GoOnAfter(std::string_view section) const override { return section != "drifts"; }

 private:
  static std::size_t Count(const ReadSection& section, std::string_view name) {
    return static_cast<std::size_t>(std::max<std::int64_t>(0, section.Value(name)));
  }

  StructureGeometry& g_;
};

// Group colours: distinct enough side by side, readable on white.
constexpr std::array<std::string_view, 12> kPalette = {
    "#1f77b4", "#d62728", "#2ca02c", "#ff7f0e", "#9467bd", "#8c564b",
    "#e377c2", "#17becf", "#bcbd22", "#7f7f7f", "#393b79", "#637939"};

std::string_view GroupColour(std::size_t g) { return kPalette[g % kPalette.size()]; }

// Screen coordinates of a point before scaling; the screen's y axis runs down.
struct Point2 {
  double u = 0, v = 0;
};

Point2 Project(ViewKind view, double x, double y, double z) {
  switch (view) {
    case ViewKind::Iso: {
      // Seen from above the corner where x and y are smallest: x runs to the upper right,
      // y to the upper left, z straight up.
      const double c = std::cos(std::numbers::pi / 6);
      return {(x - y) * c, -(z + (x + y) * 0.5)};
    }
    case ViewKind::Plan: return {x, -y};
    case ViewKind::XZ: return {x, -z};
    case ViewKind::YZ: return {y, -z};
  }
  return {};
}

constexpr double kPanelWidth = 900;
constexpr double kPanelHeight = 700;
constexpr double kMargin = 40;
constexpr double kTitleHeight = 30;
constexpr double kLegendWidth = 260;
// Elements per path: keeps each path's text short enough for a browser to parse quickly.
constexpr std::size_t kElementsPerPath = 20000;

// Maps a view's projected points into its panel, keeping the proportions.
class PanelFit {
 public:
  PanelFit(ViewKind view, const StructureGeometry& g, double left) : view_(view) {
    double umin = std::numeric_limits<double>::max(), umax = -umin;
    double vmin = umin, vmax = -umin;
    for (const auto& n : g.nodes) {
      const Point2 p = Project(view, n.x, n.y, n.z);
      umin = std::min(umin, p.u);
      umax = std::max(umax, p.u);
      vmin = std::min(vmin, p.v);
      vmax = std::max(vmax, p.v);
    }
    if (g.nodes.empty()) umin = umax = vmin = vmax = 0;
    const double w = kPanelWidth - 2 * kMargin;
    const double h = kPanelHeight - 2 * kMargin - kTitleHeight;
    const double du = umax - umin, dv = vmax - vmin;
    scale_ = 1;
    if (du > 0 || dv > 0) {
      scale_ = std::min(du > 0 ? w / du : std::numeric_limits<double>::max(),
                        dv > 0 ? h / dv : std::numeric_limits<double>::max());
    }
    // Centred in the panel.
    off_u_ = left + kMargin + (w - du * scale_) / 2 - umin * scale_;
    off_v_ = kTitleHeight + kMargin + (h - dv * scale_) / 2 - vmin * scale_;
  }
  Point2 operator()(const StructureGeometry::Node& n) const {
    const Point2 p = Project(view_, n.x, n.y, n.z);
    return {off_u_ + p.u * scale_, off_v_ + p.v * scale_};
  }

 private:
  ViewKind view_;
  double scale_ = 1, off_u_ = 0, off_v_ = 0;
};

void WriteNumber(std::ostream& out, double v) { out << fmt::format("{:.1f}", v); }

void MoveTo(std::ostream& out, char op, Point2 p) {
  out << op;
  WriteNumber(out, p.u);
  out << ' ';
  WriteNumber(out, p.v);
}

const StructureGeometry::Node* NodeAt(const StructureGeometry& g, std::int32_t k) {
  if (k < 1 || static_cast<std::size_t>(k) > g.nodes.size()) return nullptr;
  return &g.nodes[static_cast<std::size_t>(k - 1)];
}

void WriteElements(const StructureGeometry& g, const PanelFit& fit, std::ostream& out) {
  for (std::size_t gi = 0; gi < g.groups.size(); ++gi) {
    bool open = false;
    std::size_t in_path = 0;
    ForEachElement(g, gi, [&](const std::array<std::int32_t, 4>& element) {
      if (!open) {
        out << "<path class=\"g" << gi + 1 << "\" d=\"";
        open = true;
      }
      int drawn = 0;
      for (std::int32_t k : element) {
        const auto* n = NodeAt(g, k);
        if (n == nullptr) continue;
        MoveTo(out, drawn == 0 ? 'M' : 'L', fit(*n));
        ++drawn;
      }
      if (drawn > 2) out << 'Z';
      if (++in_path == kElementsPerPath) {
        out << "\"/>\n";
        open = false;
        in_path = 0;
      }
    });
    if (open) out << "\"/>\n";
  }
}

// A marker of every node that `pick` selects, all in one path; `shape` draws it at p.
template <class Pick, class Shape>
void WriteMarkers(const StructureGeometry& g, const PanelFit& fit, std::string_view css_class,
                  Pick pick, Shape shape, std::ostream& out) {
  bool open = false;
  std::size_t in_path = 0;
  for (const auto& n : g.nodes) {
    if (!pick(n)) continue;
    if (!open) {
      out << "<path class=\"" << css_class << "\" d=\"";
      open = true;
    }
    shape(out, fit(n));
    if (++in_path == kElementsPerPath) {
      out << "\"/>\n";
      open = false;
      in_path = 0;
    }
  }
  if (open) out << "\"/>\n";
}

void Triangle(std::ostream& out, Point2 p) {
  MoveTo(out, 'M', p);
  MoveTo(out, 'L', {p.u - 5, p.v + 8});
  MoveTo(out, 'L', {p.u + 5, p.v + 8});
  out << 'Z';
}

void Square(std::ostream& out, Point2 p) {
  MoveTo(out, 'M', {p.u - 4, p.v - 4});
  MoveTo(out, 'L', {p.u + 4, p.v - 4});
  MoveTo(out, 'L', {p.u + 4, p.v + 4});
  MoveTo(out, 'L', {p.u - 4, p.v + 4});
  out << 'Z';
}

void Diamond(std::ostream& out, Point2 p) {
  MoveTo(out, 'M', {p.u, p.v - 2.5});
  MoveTo(out, 'L', {p.u + 2.5, p.v});
  MoveTo(out, 'L', {p.u, p.v + 2.5});
  MoveTo(out, 'L', {p.u - 2.5, p.v});
  out << 'Z';
}

void WriteDrifts(const StructureGeometry& g, const PanelFit& fit, std::ostream& out) {
  // Drifts over the same pair of nodes (one for each horizontal axis) are drawn once, with
  // one label naming them all, so that the labels do not cover each other.
  std::vector<StructureGeometry::Drift> pairs;
  for (const auto& d : g.drifts) {
    const auto same = std::find_if(pairs.begin(), pairs.end(), [&](const auto& p) {
      return p.top == d.top && p.bottom == d.bottom;
    });
    if (same == pairs.end()) {
      pairs.push_back(d);
    } else {
      same->name += ", " + d.name;
    }
  }
  for (const auto& d : pairs) {
    const auto* top = NodeAt(g, d.top);
    const auto* bottom = NodeAt(g, d.bottom);
    if (top == nullptr || bottom == nullptr) continue;
    const Point2 a = fit(*top), b = fit(*bottom);
    out << "<path class=\"drift\" d=\"";
    MoveTo(out, 'M', a);
    MoveTo(out, 'L', b);
    out << "\"/>\n";
    out << "<circle class=\"driftnode\" cx=\"" << fmt::format("{:.1f}", a.u) << "\" cy=\""
        << fmt::format("{:.1f}", a.v) << "\" r=\"5\"/>\n";
    out << "<circle class=\"driftnode\" cx=\"" << fmt::format("{:.1f}", b.u) << "\" cy=\""
        << fmt::format("{:.1f}", b.v) << "\" r=\"5\"/>\n";
    out << "<text class=\"label\" x=\"" << fmt::format("{:.1f}", a.u + 8) << "\" y=\""
        << fmt::format("{:.1f}", a.v - 8) << "\">" << XmlEscaped(d.name) << "</text>\n";
  }
}

std::string_view ViewTitle(ViewKind kind) {
  switch (kind) {
    case ViewKind::Iso: return "Isometric view";
    case ViewKind::Plan: return "Plan (X-Y)";
    case ViewKind::XZ: return "Elevation (X-Z)";
    case ViewKind::YZ: return "Elevation (Y-Z)";
  }
  return "";
}

void WriteLegend(const StructureGeometry& g, double left, std::ostream& out) {
  double y = kTitleHeight + kMargin;
  out << "<g class=\"legend\">\n";
  out << "<text class=\"title\" x=\"" << left << "\" y=\"" << y << "\">Element groups</text>\n";
  y += 22;
  for (std::size_t gi = 0; gi < g.groups.size(); ++gi) {
    out << "<rect x=\"" << left << "\" y=\"" << y - 10 << "\" width=\"18\" height=\"10\" fill=\""
        << GroupColour(gi) << "\"/>";
    out << "<text x=\"" << left + 26 << "\" y=\"" << y << "\">"
        << XmlEscaped(g.groups[gi].name) << " (" << g.ElementCount(gi) << ")</text>\n";
    y += 18;
  }
  y += 14;
  auto key = [&](std::string_view css_class, void (*shape)(std::ostream&, Point2),
                 std::string_view text) {
    out << "<path class=\"" << css_class << "\" d=\"";
    shape(out, {left + 9, y - 6});
    out << "\"/><text x=\"" << left + 26 << "\" y=\"" << y << "\">" << text << "</text>\n";
    y += 20;
  };
  key("fixed", Square, "fixed support");
  key("support", Triangle, "other support");
  key("diaphragm", Diamond, "diaphragm node");
  out << "<path class=\"drift\" d=\"M" << left << ' ' << y - 5 << "L" << left + 18 << ' '
      << y - 5 << "\"/><text x=\"" << left + 26 << "\" y=\"" << y << "\">drift pair</text>\n";
  out << "</g>\n";
}

}  // namespace

std::optional<ViewKind> ParseViewKind(std::string_view word) {
  for (ViewKind k : {ViewKind::Iso, ViewKind::Plan, ViewKind::XZ, ViewKind::YZ}) {
    if (word == ViewKindName(k)) return k;
  }
  return std::nullopt;
}

std::string_view ViewKindName(ViewKind kind) {
  switch (kind) {
    case ViewKind::Iso: return "iso";
    case ViewKind::Plan: return "plan";
    case ViewKind::XZ: return "xz";
    case ViewKind::YZ: return "yz";
  }
  return "";
}

std::size_t StructureGeometry::ElementCount(std::size_t g) const {
  return element_records ? element_records->elements[g] : groups[g].elements.size();
}

StructureGeometry StreamGeometryFromFolder(const fs::path& folder) {
  StructureGeometry g;
  const fs::path file = folder / "TRKDS";
  GeometrySink sink(g, file);
  StreamStructureFile("S", file, sink);
  return g;
}

StructureGeometry GeometryFromStructure(const StructureRead& read) {
  StructureGeometry g;
  const ReadFile* s = read.File("S");
  if (s == nullptr) return g;
  if (const ReadSection* nodes = s->Section("nodes")) {
    for (const ReadRecord* r : nodes->Records("TrelkNodeRec")) {
      g.nodes.push_back(NodeOf(*r));
    }
  }
  if (const ReadSection* groups = s->Section("element groups")) {
    for (const ReadRecord* r : groups->Records("TrelkElemGroupRec")) {
      g.groups.push_back({FieldText(*r, elem_group_rec::Name), {}});
    }
  }
  if (const ReadSection* elems = s->Section("elements")) {
    for (const ReadRecord* r : elems->Records("TrelkElemRec")) {
      // A group's leading element has group number 0 and stands for no element.
      const std::int64_t group = r->Int(elem_rec::GroupNumber);
      if (group < 1 || static_cast<std::size_t>(group) > g.groups.size()) continue;
      g.groups[static_cast<std::size_t>(group - 1)].elements.push_back(ElementNodes(r->bytes));
    }
  }
  if (const ReadSection* drifts = s->Section("drifts")) {
    for (const ReadRecord* r : drifts->Records("TrelkDriftRec")) {
      g.drifts.push_back(DriftOf(*r));
    }
  }
  return g;
}

void WriteStructureSvg(const StructureGeometry& g, const std::vector<ViewKind>& views,
                       std::ostream& out) {
  const double width = kPanelWidth * static_cast<double>(views.size()) + kLegendWidth;
  const double height =
      std::max(kPanelHeight, kTitleHeight + kMargin + 22 + 18 * static_cast<double>(g.groups.size()) + 120);
  out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  out << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << width << "\" height=\""
      << height << "\" viewBox=\"0 0 " << width << ' ' << height << "\">\n";
  out << "<style>\n"
         "text{font-family:sans-serif;font-size:13px;fill:#222}\n"
         ".title{font-size:16px;font-weight:bold}\n"
         "path{fill:none;stroke-width:1;stroke-linejoin:round}\n"
         ".fixed{fill:#000;stroke:#000}\n"
         ".support{fill:#fff;stroke:#000;stroke-width:1.2}\n"
         ".diaphragm{fill:#e6a000;stroke:none}\n"
         ".drift{stroke:#c00;stroke-width:2;stroke-dasharray:6 4}\n"
         ".driftnode{fill:none;stroke:#c00;stroke-width:2}\n"
         ".label{fill:#c00}\n";
  for (std::size_t gi = 0; gi < g.groups.size(); ++gi) {
    out << ".g" << gi + 1 << "{stroke:" << GroupColour(gi) << "}\n";
  }
  out << "</style>\n";
  out << "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n";
  for (std::size_t v = 0; v < views.size(); ++v) {
    const double left = kPanelWidth * static_cast<double>(v);
    const PanelFit fit(views[v], g, left);
    out << "<g class=\"view-" << ViewKindName(views[v]) << "\">\n";
    out << "<text class=\"title\" x=\"" << left + kMargin << "\" y=\"" << kTitleHeight
        << "\">" << ViewTitle(views[v]) << "</text>\n";
    WriteElements(g, fit, out);
    WriteMarkers(
        g, fit, "diaphragm", [](const auto& n) { return n.diaphragm != 0; }, Diamond, out);
    WriteMarkers(
        g, fit, "fixed", [](const auto& n) { return n.support == 1; }, Square, out);
    WriteMarkers(
        g, fit, "support", [](const auto& n) { return n.support != 0 && n.support != 1; },
        Triangle, out);
    WriteDrifts(g, fit, out);
    out << "</g>\n";
  }
  WriteLegend(g, kPanelWidth * static_cast<double>(views.size()) + 10, out);
  out << "</svg>\n";
}

int RunViewCommand(const std::string& input, const std::string& svg_file,
                   const std::vector<std::string>& view_words, std::ostream& out,
                   std::ostream& err) {
  std::vector<ViewKind> views;
  for (const std::string& word : view_words) {
    const auto kind = ParseViewKind(word);
    if (!kind) {
      err << "Error : unknown view \"" << word << "\"; the views are iso, plan, xz and yz.\n";
      return exit_status::kUsage;
    }
    if (std::find(views.begin(), views.end(), *kind) == views.end()) views.push_back(*kind);
  }
  if (views.empty()) views.push_back(ViewKind::Iso);

  // A model file is transferred into a folder of its own under the system's temporary
  // folder, which stays only until the picture is drawn: the elements are read from it as
  // they are drawn.
  struct TempFolder {
    fs::path path;
    ~TempFolder() {
      std::error_code ec;
      if (!path.empty()) fs::remove_all(path, ec);
    }
  } temp;
  fs::path folder = input;
  if (!fs::is_directory(input)) {
    std::unique_ptr<JsonModelHost> host;
    try {
      host = JsonModelHost::FromFile(input);
    } catch (const ModelFileError& error) {
      err << error.what() << '\n';
      return exit_status::kBadModelFile;
    }
    const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
    temp.path = fs::temp_directory_path() / fmt::format("vask2trelk-view-{}", stamp);
    std::error_code ec;
    fs::create_directories(temp.path / "View", ec);
    if (ec) {
      err << "Error : cannot make the temporary folder " << temp.path.string() << ".\n";
      temp.path.clear();
      return exit_status::kFolderNotMade;
    }
    CollectedMessages messages;
    int status = exit_status::kComplete;
    try {
      // The store and the model go before the files are read back: a large structure
      // should not be held twice.
      TrelkStore store;
      const TransformOutcome outcome =
          Transform(host.get(), store, messages, temp.path.string(), "View", std::nullopt);
      if (outcome == TransformOutcome::NoModel) status = exit_status::kNoModel;
      if (outcome == TransformOutcome::EmptyModel) status = exit_status::kEmptyModel;
    } catch (const std::exception& e) {
      err << "Transfer stopped\n" << e.what() << '\n';
      status = exit_status::kTransferFailed;
    }
    host.reset();
    if (status != exit_status::kComplete) {
      for (const UserMessage& m : messages.messages) {
        if (!m.title.empty()) err << m.title << '\n';
        err << m.text << '\n';
      }
      return status;
    }
    folder = temp.path / "View";
  }

  StructureGeometry geometry;
  try {
    geometry = StreamGeometryFromFolder(folder);
  } catch (const std::exception& e) {
    err << "Error : " << e.what() << '\n';
    return exit_status::kUsage;
  }

  std::ofstream file(svg_file, std::ios::binary);
  if (!file) {
    err << "Error : cannot write \"" << svg_file << "\".\n";
    return exit_status::kUsage;
  }
  WriteStructureSvg(geometry, views, file);
  file.flush();
  if (!file) {
    err << "Error : cannot write \"" << svg_file << "\".\n";
    return exit_status::kUsage;
  }
  std::size_t elements = 0;
  for (std::size_t g = 0; g < geometry.groups.size(); ++g) elements += geometry.ElementCount(g);
  out << "Picture of " << geometry.nodes.size() << " nodes and " << elements
      << " elements written to " << svg_file << '\n';
  return exit_status::kComplete;
}

}  // namespace vtt
