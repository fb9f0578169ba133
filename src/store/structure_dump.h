// Printing what the structure reader read: every section with its header values, every
// record with its named fields, as text for a person or as JSON for a program.
#pragma once

#include <ostream>

#include <nlohmann/json.hpp>

#include "store/structure_reader.h"

namespace vtt {

void DumpText(const ReadFile& file, std::ostream& out);
void DumpText(const StructureRead& structure, std::ostream& out);

nlohmann::ordered_json DumpJson(const ReadFile& file);
nlohmann::ordered_json DumpJson(const StructureRead& structure);

// A value as the text dump shows it: numbers in their shortest exact form, texts quoted
// with zero bytes and other unprintable bytes as \xNN.
std::string ValueText(const ReadValue& value);

}  // namespace vtt
