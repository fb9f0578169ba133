#include "app/rule_text.h"

#include <array>

namespace vtt {
namespace {

// The lines exactly as the form shows them, trailing spaces included (the end of rule 4's
// third line, of rule 12's first line and of rule 15): they are part of the words.
constexpr std::array<std::string_view, 78> kLines = {
    "1.  This command will export out a model in a Trelk Structure formatted file using the following transfer rules.",
    "2.  Units are transferred according to the current program units.",
    "3.  Only concrete/steel/rebar materials are transferred. If a concrete/steel/rebar material does not exist, a default one is automatically created during the transfer.",
    "For uniaxial/anisotropic materials, the first set of properties are used as an isotropic material (E, Nu, G).",
    "The following Trelk Materials are generated based on model material types and are used in the corresponding components:",
    "    Inelastic Steel Material, Non-Buckling",
    "    Inelastic Concrete Material",
    "    Inelastic Shear Material for a Wall",
    "    Elastic Material for Fiber Sections",
    "    Elastic Shear Material for a Wall",
    "    Elastic Material for a Slab or Shell",
    "4.  Frames are transferred into different Trelk Frame Member Compound Components.",
    "Depending on the material, geometry, end releases, and hinges assigned, ",
    "Elastic or FEMA beam/column compounds are defined and used for frame members.",
    "Important:",
    "Frames with hinges are transferred based on their geometry (i.e. vertical = column, horizontal = beam, other = brace)!",
    "Trelk Inelastic FEMA beam/column M-phi capacity/PMM capacity values need to be input by the user!",
    "Frame section modifiers are not transferred.",
    "Frame offsets and insertion points are not transferred.",
    "Link types other than hinges, such as isolators/dampers, are not transferred.",
    "The following Trelk Inelastic properties are generated for the corresponding Compound Components:",
    "     FEMA Beam, Steel Type",
    "     FEMA Beam, Concrete Type",
    "     FEMA Column, Steel Type",
    "     FEMA Column, Concrete Type",
    "The following Frame Member Compound Components are created during the transfer:",
    "     CpdBmS/CpdColS/CpdBmC/CpdColC/CpdFemaBmS/CpdFemaColS/CpdFemaBmC/CpdFemaColC/CpdEmbed",
    "Model sections transferred are available as Trelk Cross Sections.",
    "Rectangular sections for concrete and I-sections for steel retain their shapes - all other sections are displayed with 'No specific shape' when imported.",
    "The following Trelk sections are created:",
    "    Beam, Reinforced Concrete Section",
    "    Beam, Steel Type, Nonstandard Section",
    "    Column, Reinforced Concrete Section",
    "    Column, Steel Type, Nonstandard Section",
    "    Shear Wall, Inelastic Section",
    "    Shear Wall, Elastic Section",
    "    General Wall, Inelastic Section",
    "    General Wall, Elastic Section",
    "    Slab or Shell, Elastic Section",
    "5.  Shells are transferred to Trelk's Compound Components.",
    "Nonlinear layered shells must be comprised of at least one membrane/shell layer of concrete and one layer of rebar.",
    "The layers in the layered shell should be setup as follows and are transferred to the indicated Trelk Compound Component.",
    "Conc: 1)MatAng=0, S22 nonlinear->Trelk fiber wall. (Axial-Moment behavior)",
    "        MatAng=90, S11 nonlinear->Trelk fiber wall. (Axial-Moment behavior)",
    "      2)MatAng=0 S11 nonlinear->Trelk General Wall (Axial-Moment behavior in horizontal)",
    "        MatAng=90 S22 nonlinear->Trelk General Wall (Axial-Moment behavior in horizontal)",
    "      3)MatAng=0 or 90, S11 and S22 nonlinear->Trelk General Wall (Axial-Moment behavior in H and V)",
    "The reinforcement ratio is taken as the sum of all rebar membrane/shell layer thicknesses.",
    "The concrete thickness is taken as the sum of all concrete membrane/shell layer thicknesses.",
    "Only 3- and 4-noded shells are transferred. 3-noded shells are divided into three 4-noded areas.",
    "4-noded shells are sorted by their normal vector, checking for wall/slab/ramp orientation, etc.",
    "Mapping is done as follows:",
    "    Elastic thin shell -> Elastic/Inelastic Shear Wall in Trelk",
    "    Wall -> Wall in Trelk",
    "    Floor/Ramp -> Slab/Shell in Trelk",
    "6. Supports are transferred, but the local axis angle is not. Springs are not transferred.",
    "7. Rigid diaphragm constraints are transferred, but only those with a normal in the Z-direction.",
    "8. Masses and the Mass Source are transferred. Only Gravity/Z/Projected-Z mass in global coordinates is transferred.",
    "Only Dead/Live load patterns from the Mass Source loads are transferred.",
    "Loads on beams are converted into point masses using simply-supported beam equilibrium.",
    "Mass in Trelk is specified as lumped mass concentrated at the nodes.",
    "9. Compound Components generated from model objects are automatically assigned to element groups in Trelk, and include the orientation of the local axes.",
    "10. Nodal/Frame Distributed/Frame Point/Area Distributed and self-weight loads are transferred.",
    "Area distributed loads are transferred as equivalent point loads at the nodes.",
    "Only Dead and Live load patterns are considered.",
    "11. Drift is defined using the highest and lowest nodes that lie along a nearly vertical line.",
    "12. When importing a model, a default Structure Section is generated in Trelk. This is a section cut at the base defined by cutting through all ",
    "Frames and Areas with supports. Frames are cut at the bottom supported node, and areas are cut using the two bottom supported notes. Slabs are not considered for Trelk Structure Sections.",
    "Note: If supports are not all at one elevation or restraints are assigned at other positions, the Structure Sections should be reviewed.",
    "13. Nonlinear static load cases are transferred to Gravity or Static Pushover Load Cases.",
    "Force-controlled cases are transferred to Linear-Gravity Load Cases, and",
    "Displacement-controlled cases are transferred to Pushover Load Cases.",
    "Scale factors, patterns, etc. need to be input by the user.",
    "14. Nonlinear time history load cases are transferred to Dynamic Earthquake Load Cases.",
    "Time history functions From File are saved in Trelk's Records directory.",
    "Note: The Trelk records can be found in the Records folder within the Trelk installation directory.",
    "15. The Analysis Series in Trelk must be created by the user. ",
    "16. The Trelk Structure should be reviewed completely before running the model.",
};

}  // namespace

std::span<const std::string_view> RuleTextLines() { return kLines; }

bool OpensNumberedRule(std::string_view line) {
  std::size_t digits = 0;
  while (digits < line.size() && line[digits] >= '0' && line[digits] <= '9') ++digits;
  return digits > 0 && digits < line.size() && line[digits] == '.';
}

// The form builds the text once: each line followed by a line break, and a blank line
// between paragraphs. A paragraph is one numbered rule with the lines that carry it on
// (its lists, its "Important:" and "Note:" lines, the "Conc: 1)..." layer table), so the
// blank line stands before every numbered rule but the first: none ahead of rule 1 and
// none after rule 16. The log box adds one more line break when the text is appended to
// it; that break belongs to the box, not to the text, and is not printed here.
std::string TransferRuleText() {
  std::string text;
  bool first = true;
  for (std::string_view line : kLines) {
    if (OpensNumberedRule(line) && !first) text += '\n';
    first = false;
    text += line;
    text += '\n';
  }
  return text;
}

}  // namespace vtt
