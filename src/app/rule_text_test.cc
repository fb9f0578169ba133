// The rule text as the user reads it with `vask2trelk rules`.
#include "app/rule_text.h"

#include <gtest/gtest.h>

#include <string>

namespace vtt {
namespace {

// Each line with its line break; a blank line before every numbered rule but the first.
const char* const kExpectedRuleText =
    "1.  This command will export out a model in a Trelk Structure formatted file using the following transfer rules.\n"
    "\n"
    "2.  Units are transferred according to the current program units.\n"
    "\n"
    "3.  Only concrete/steel/rebar materials are transferred. If a concrete/steel/rebar material does not exist, a default one is automatically created during the transfer.\n"
    "For uniaxial/anisotropic materials, the first set of properties are used as an isotropic material (E, Nu, G).\n"
    "The following Trelk Materials are generated based on model material types and are used in the corresponding components:\n"
    "    Inelastic Steel Material, Non-Buckling\n"
    "    Inelastic Concrete Material\n"
    "    Inelastic Shear Material for a Wall\n"
    "    Elastic Material for Fiber Sections\n"
    "    Elastic Shear Material for a Wall\n"
    "    Elastic Material for a Slab or Shell\n"
    "\n"
    "4.  Frames are transferred into different Trelk Frame Member Compound Components.\n"
    "Depending on the material, geometry, end releases, and hinges assigned, \n"
    "Elastic or FEMA beam/column compounds are defined and used for frame members.\n"
    "Important:\n"
    "Frames with hinges are transferred based on their geometry (i.e. vertical = column, horizontal = beam, other = brace)!\n"
    "Trelk Inelastic FEMA beam/column M-phi capacity/PMM capacity values need to be input by the user!\n"
    "Frame section modifiers are not transferred.\n"
    "Frame offsets and insertion points are not transferred.\n"
    "Link types other than hinges, such as isolators/dampers, are not transferred.\n"
    "The following Trelk Inelastic properties are generated for the corresponding Compound Components:\n"
    "     FEMA Beam, Steel Type\n"
    "     FEMA Beam, Concrete Type\n"
    "     FEMA Column, Steel Type\n"
    "     FEMA Column, Concrete Type\n"
    "The following Frame Member Compound Components are created during the transfer:\n"
    "     CpdBmS/CpdColS/CpdBmC/CpdColC/CpdFemaBmS/CpdFemaColS/CpdFemaBmC/CpdFemaColC/CpdEmbed\n"
    "Model sections transferred are available as Trelk Cross Sections.\n"
    "Rectangular sections for concrete and I-sections for steel retain their shapes - all other sections are displayed with 'No specific shape' when imported.\n"
    "The following Trelk sections are created:\n"
    "    Beam, Reinforced Concrete Section\n"
    "    Beam, Steel Type, Nonstandard Section\n"
    "    Column, Reinforced Concrete Section\n"
    "    Column, Steel Type, Nonstandard Section\n"
    "    Shear Wall, Inelastic Section\n"
    "    Shear Wall, Elastic Section\n"
    "    General Wall, Inelastic Section\n"
    "    General Wall, Elastic Section\n"
    "    Slab or Shell, Elastic Section\n"
    "\n"
    "5.  Shells are transferred to Trelk's Compound Components.\n"
    "Nonlinear layered shells must be comprised of at least one membrane/shell layer of concrete and one layer of rebar.\n"
    "The layers in the layered shell should be setup as follows and are transferred to the indicated Trelk Compound Component.\n"
    "Conc: 1)MatAng=0, S22 nonlinear->Trelk fiber wall. (Axial-Moment behavior)\n"
    "        MatAng=90, S11 nonlinear->Trelk fiber wall. (Axial-Moment behavior)\n"
    "      2)MatAng=0 S11 nonlinear->Trelk General Wall (Axial-Moment behavior in horizontal)\n"
    "        MatAng=90 S22 nonlinear->Trelk General Wall (Axial-Moment behavior in horizontal)\n"
    "      3)MatAng=0 or 90, S11 and S22 nonlinear->Trelk General Wall (Axial-Moment behavior in H and V)\n"
    "The reinforcement ratio is taken as the sum of all rebar membrane/shell layer thicknesses.\n"
    "The concrete thickness is taken as the sum of all concrete membrane/shell layer thicknesses.\n"
    "Only 3- and 4-noded shells are transferred. 3-noded shells are divided into three 4-noded areas.\n"
    "4-noded shells are sorted by their normal vector, checking for wall/slab/ramp orientation, etc.\n"
    "Mapping is done as follows:\n"
    "    Elastic thin shell -> Elastic/Inelastic Shear Wall in Trelk\n"
    "    Wall -> Wall in Trelk\n"
    "    Floor/Ramp -> Slab/Shell in Trelk\n"
    "\n"
    "6. Supports are transferred, but the local axis angle is not. Springs are not transferred.\n"
    "\n"
    "7. Rigid diaphragm constraints are transferred, but only those with a normal in the Z-direction.\n"
    "\n"
    "8. Masses and the Mass Source are transferred. Only Gravity/Z/Projected-Z mass in global coordinates is transferred.\n"
    "Only Dead/Live load patterns from the Mass Source loads are transferred.\n"
    "Loads on beams are converted into point masses using simply-supported beam equilibrium.\n"
    "Mass in Trelk is specified as lumped mass concentrated at the nodes.\n"
    "\n"
    "9. Compound Components generated from model objects are automatically assigned to element groups in Trelk, and include the orientation of the local axes.\n"
    "\n"
    "10. Nodal/Frame Distributed/Frame Point/Area Distributed and self-weight loads are transferred.\n"
    "Area distributed loads are transferred as equivalent point loads at the nodes.\n"
    "Only Dead and Live load patterns are considered.\n"
    "\n"
    "11. Drift is defined using the highest and lowest nodes that lie along a nearly vertical line.\n"
    "\n"
    "12. When importing a model, a default Structure Section is generated in Trelk. This is a section cut at the base defined by cutting through all \n"
    "Frames and Areas with supports. Frames are cut at the bottom supported node, and areas are cut using the two bottom supported notes. Slabs are not considered for Trelk Structure Sections.\n"
    "Note: If supports are not all at one elevation or restraints are assigned at other positions, the Structure Sections should be reviewed.\n"
    "\n"
    "13. Nonlinear static load cases are transferred to Gravity or Static Pushover Load Cases.\n"
    "Force-controlled cases are transferred to Linear-Gravity Load Cases, and\n"
    "Displacement-controlled cases are transferred to Pushover Load Cases.\n"
    "Scale factors, patterns, etc. need to be input by the user.\n"
    "\n"
    "14. Nonlinear time history load cases are transferred to Dynamic Earthquake Load Cases.\n"
    "Time history functions From File are saved in Trelk's Records directory.\n"
    "Note: The Trelk records can be found in the Records folder within the Trelk installation directory.\n"
    "\n"
    "15. The Analysis Series in Trelk must be created by the user. \n"
    "\n"
    "16. The Trelk Structure should be reviewed completely before running the model.\n"
    ;

TEST(RuleText, IsEveryLineWithABlankLineBetweenNumberedRules) {
  EXPECT_EQ(TransferRuleText(), kExpectedRuleText);
}

TEST(RuleText, HasSeventyEightLinesAndFifteenBlankLines) {
  const std::string text = TransferRuleText();
  EXPECT_EQ(RuleTextLines().size(), 78u);
  std::size_t breaks = 0;
  std::size_t blanks = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\n') continue;
    ++breaks;
    if (i > 0 && text[i - 1] == '\n') ++blanks;
  }
  EXPECT_EQ(breaks, 93u);
  EXPECT_EQ(blanks, 15u);
  // No blank line ahead of the first rule, none after the last.
  EXPECT_EQ(text.rfind("1.  This command will export", 0), 0u);
  EXPECT_EQ(text.substr(text.size() - 2), ".\n");
}

TEST(RuleText, KeepsTheTrailingSpacesOfItsLines) {
  const std::string text = TransferRuleText();
  EXPECT_NE(text.find("and hinges assigned, \nElastic or FEMA"), std::string::npos);
  EXPECT_NE(text.find("cutting through all \nFrames and Areas"), std::string::npos);
  EXPECT_NE(text.find("created by the user. \n\n16. The Trelk"), std::string::npos);
}

TEST(RuleText, NotesAndListsStayWithTheirRule) {
  const std::string text = TransferRuleText();
  EXPECT_NE(text.find("not considered for Trelk Structure Sections.\nNote: If supports"),
            std::string::npos);
  EXPECT_NE(text.find("the Structure Sections should be reviewed.\n\n13. "), std::string::npos);
  EXPECT_NE(text.find("input by the user!\nFrame section modifiers"), std::string::npos);
  EXPECT_NE(text.find("Slab or Shell, Elastic Section\n\n5.  Shells"), std::string::npos);
  EXPECT_NE(text.find("(Axial-Moment behavior in H and V)\nThe reinforcement"),
            std::string::npos);
}

TEST(RuleText, ANumberedRuleOpensWithDigitsAndAFullStop) {
  EXPECT_TRUE(OpensNumberedRule("1.  This command"));
  EXPECT_TRUE(OpensNumberedRule("16. The Trelk Structure"));
  EXPECT_FALSE(OpensNumberedRule("      2)MatAng=0 S11 nonlinear"));
  EXPECT_FALSE(OpensNumberedRule("Conc: 1)MatAng=0"));
  EXPECT_FALSE(OpensNumberedRule("Note: If supports"));
  EXPECT_FALSE(OpensNumberedRule("12"));
  EXPECT_FALSE(OpensNumberedRule(""));
}

}  // namespace
}  // namespace vtt
