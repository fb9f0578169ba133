// The summary printed at the end of a transfer.
#include "app/summary.h"

#include <gtest/gtest.h>

#include <sstream>

namespace vtt {
namespace {

TEST(StructureSummary, PrintsOneCountALineInAColumn) {
  StructureSummary s;
  s.folder = "out/Office";
  s.nodes = 197;
  s.diaphragms = 6;
  s.element_groups = {{"ElemConcCol", 120}, {"ElemConcWall", 24}};
  s.components = {{"end zones", 1}, {"compound frame components", 24}};
  s.nodal_load_patterns = 4;
  s.frame_load_patterns = 2;
  s.self_weight_patterns = 1;
  s.nodal_mass_patterns = 1;
  s.structure_frames = 5;
  s.section_cuts = 2;
  s.drifts = 2;
  s.gravity_cases = 2;
  s.pushover_cases = 4;
  s.dynamic_cases = 2;
  s.analysis_series = 1;
  s.record_files = 8;
  s.records_folder = "out/TRELK/Records/EqkeGroup";
  std::ostringstream out;
  PrintStructureSummary(out, s);
  EXPECT_EQ(out.str(),
            "Structure written to out/Office\n"
            "  nodes:                            197 (node 1 is the origin node of every structure)\n"
            "  rigid diaphragms:                 6\n"
            "  elements:                         144 in 2 element groups\n"
            "    ElemConcCol:                    120\n"
            "    ElemConcWall:                   24\n"
            "  components:                       25\n"
            "    end zones:                      1\n"
            "    compound frame components:      24\n"
            "  load patterns:                    4 nodal, 2 frame load, 1 self weight, 1 nodal mass\n"
            "  structure frames (groups):        5\n"
            "  section cuts:                     2\n"
            "  drifts:                           2\n"
            "  load cases:                       2 gravity, 4 pushover, 2 dynamic\n"
            "  analysis series entries:          1\n"
            "  record files:                     8 in out/TRELK/Records/EqkeGroup\n");
}

TEST(StructureSummary, OneGroupIsOneElementGroupAndALongNameGetsItsOwnSpace) {
  StructureSummary s;
  s.element_groups = {{"AVeryLongElementGroupNameOfManyLetters", 3}};
  std::ostringstream out;
  PrintStructureSummary(out, s);
  EXPECT_NE(out.str().find("  elements:                         3 in 1 element group\n"),
            std::string::npos);
  EXPECT_NE(out.str().find("    AVeryLongElementGroupNameOfManyLetters: 3\n"),
            std::string::npos);
  EXPECT_NE(out.str().find("  record files:                     0\n"), std::string::npos);
}

}  // namespace
}  // namespace vtt
