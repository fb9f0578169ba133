#include "store/structure_dump.h"

#include <fmt/format.h>

#include "store/text_encoding.h"

namespace vtt {
namespace {

std::size_t NonZero(const std::vector<std::uint8_t>& bytes) {
  std::size_t n = 0;
  for (std::uint8_t b : bytes) n += b != 0 ? 1 : 0;
  return n;
}

std::string RealText(const ReadValue& v) {
  // An f32 field is shown as the single-precision number it holds.
  if (v.kind == FieldKind::F32) return fmt::format("{}", static_cast<float>(v.real));
  return fmt::format("{}", v.real);
}

nlohmann::ordered_json JsonValue(const ReadValue& v) {
  switch (v.kind) {
    case FieldKind::Text: return FromWindows1252(v.text);
    case FieldKind::F32: return static_cast<double>(static_cast<float>(v.real));
    case FieldKind::F64:
    case FieldKind::TaggedF64: return v.real;
    default: return v.integer;
  }
}

void TextRecord(const ReadRecord& r, std::ostream& out) {
  out << "    " << r.record;
  if (!r.index.empty()) out << ' ' << r.index;
  out << " at " << r.offset;
  if (r.block || r.layout == nullptr) {
    out << ": " << r.bytes.size() << " bytes, " << NonZero(r.bytes) << " not zero\n";
    return;
  }
  out << '\n';
  for (const ReadValue& v : r.Fields()) out << "      " << v.name << " = " << ValueText(v) << '\n';
}

}  // namespace

std::string ValueText(const ReadValue& value) {
  switch (value.kind) {
    case FieldKind::Text: {
      std::string s = "\"";
      for (char c : value.text) {
        const auto b = static_cast<unsigned char>(c);
        if (b >= 0x20 && b < 0x7f && c != '"' && c != '\\') {
          s += c;
        } else {
          s += fmt::format("\\x{:02X}", b);
        }
      }
      return s + "\"";
    }
    case FieldKind::F32:
    case FieldKind::F64:
    case FieldKind::TaggedF64: return RealText(value);
    case FieldKind::TaggedI16:
      return value.width == 2 ? std::string("(empty)") : std::to_string(value.integer);
    default: return std::to_string(value.integer);
  }
}

void DumpText(const ReadFile& file, std::ostream& out) {
  if (file.missing) {
    out << file.name << ": missing\n";
    return;
  }
  out << file.name << ": " << file.size << " bytes\n";
  for (const ReadSection& s : file.sections) {
    out << "  " << s.name << " at " << s.offset << '\n';
    for (const ReadValue& v : s.values) out << "    " << v.name << " = " << ValueText(v) << '\n';
    for (const ReadRecord& r : s.records) TextRecord(r, out);
  }
  if (file.truncated) {
    out << "  the file ends at " << file.truncated->size << " inside " << file.truncated->what
        << ", which needs " << file.truncated->needed << " bytes from offset "
        << file.truncated->offset << '\n';
  }
  for (const std::string& u : file.unreadable) out << "  not read further: " << u << '\n';
  if (!file.truncated && file.unreadable.empty() && file.size > file.end) {
    out << "  " << file.size - file.end << " bytes after the content, from offset " << file.end
        << '\n';
  }
}

void DumpText(const StructureRead& structure, std::ostream& out) {
  out << "Structure folder " << structure.folder.string() << '\n';
  for (const ReadFile& f : structure.files) DumpText(f, out);
}

nlohmann::ordered_json DumpJson(const ReadFile& file) {
  nlohmann::ordered_json j;
  j["file"] = file.name;
  if (file.missing) {
    j["missing"] = true;
    return j;
  }
  j["size"] = file.size;
  j["end"] = file.end;
  if (file.truncated) {
    j["truncated"] = {{"offset", file.truncated->offset},
                      {"needed", file.truncated->needed},
                      {"what", file.truncated->what}};
  }
  if (!file.unreadable.empty()) j["unreadable"] = file.unreadable;
  j["sections"] = nlohmann::ordered_json::array();
  for (const ReadSection& s : file.sections) {
    nlohmann::ordered_json js;
    js["name"] = s.name;
    js["offset"] = s.offset;
    js["end"] = s.end;
    js["values"] = nlohmann::ordered_json::object();
    for (const ReadValue& v : s.values) js["values"][v.name] = JsonValue(v);
    js["records"] = nlohmann::ordered_json::array();
    for (const ReadRecord& r : s.records) {
      nlohmann::ordered_json jr;
      jr["record"] = r.record;
      if (!r.index.empty()) jr["index"] = r.index;
      jr["offset"] = r.offset;
      if (r.block || r.layout == nullptr) {
        jr["bytes"] = r.bytes.size();
        jr["nonzero"] = NonZero(r.bytes);
      } else {
        jr["fields"] = nlohmann::ordered_json::object();
        for (const ReadValue& v : r.Fields()) jr["fields"][v.name] = JsonValue(v);
      }
      js["records"].push_back(std::move(jr));
    }
    j["sections"].push_back(std::move(js));
  }
  return j;
}

nlohmann::ordered_json DumpJson(const StructureRead& structure) {
  nlohmann::ordered_json j;
  j["folder"] = structure.folder.string();
  j["files"] = nlohmann::ordered_json::array();
  for (const ReadFile& f : structure.files) j["files"].push_back(DumpJson(f));
  return j;
}

}  // namespace vtt
