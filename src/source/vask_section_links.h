// Sections to materials (stages 16 and 17 of ReadVaskData) and the layer rule of a
// layered shell.
//
// The link stages are nested loops over sections and materials that keep scanning after a
// match, so among materials of equal labels the last one wins. Stage 16 compares a frame
// section's material name with a material label without regard to case, but an embedded
// section's name exactly; stage 17 compares exactly. The asymmetry is the rule.
//
// Case folding is per byte and ASCII only: "A" to "Z" fold to "a" to "z", every other byte
// stays. Labels are held as UTF-8, whose multi-byte characters have no byte below 0x80, so
// folding never touches them: "CONCRETE" and "concrete" match, "É" and "é" do not.
//
// The stages run through a label index built once per stage, which gives what the nested
// loops give in time linear in the model's size; the literal nested loops of stage 16 are
// kept as the reference the index must agree with.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace vtt {

class VaskModelObj;
class VaskPropAreaSectObj;
class VaskPropMaterialObj;

// `text` with "A" to "Z" made lower case and every other byte kept.
std::string AsciiLower(std::string_view text);
// Whether two texts are equal once "A" to "Z" are made lower case, byte by byte.
bool EqualsIgnoringAsciiCase(std::string_view a, std::string_view b);

// The materials of a model by label, as the link stages find them: for a name, the LAST
// material whose label matches it.
class LastMaterialByLabel {
 public:
  explicit LastMaterialByLabel(const VaskModelObj& model);

  // The last material whose label equals `name` exactly, or nullptr.
  VaskPropMaterialObj* Exact(std::string_view name) const;
  // The last material whose label equals `name` but for ASCII case, or nullptr.
  VaskPropMaterialObj* IgnoringCase(std::string_view name) const;

 private:
  struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>{}(text);
    }
  };
  using Index = std::unordered_map<std::string, VaskPropMaterialObj*, TextHash, std::equal_to<>>;

  Index exact_;
  Index folded_;
};

// Stage 16: each frame section's PropMatObj becomes the last material whose label matches
// its PropMatName but for case, and each embedded section's the last whose label matches
// exactly. A section whose name matches no material keeps the PropMatObj it had.
void LinkFrameSectionsToMaterials(VaskModelObj& model);
// The same through the literal nested loops.
void LinkFrameSectionsToMaterialsLiteral(VaskModelObj& model);

// Stage 17: each area section's PropMatObj becomes the last material whose label equals
// its PropMat (unchanged when none does); then the layer rule runs on every layered shell
// (ShellType 6, PropType 1).
void LinkAreaSectionsToMaterials(VaskModelObj& model);

// The layer rule: classifies a layered shell by its concrete and rebar layers and sets
// LayerTrelkType, the thickness sums LayerTrelkThick, LayerTrelkThickBend,
// LayerTrelkThickRebarV and LayerTrelkThickRebarH, and the layer materials
// LayerPropMatConcObj, LayerPropMatRebarObj and LayerPropMatObj. A layer's material is
// the first material of the model with exactly its label (PropMaterialObjGet).
//
// It adds to the section's sums and starts from the LayerTrelkType the section holds, so
// it runs once on a section as read, whose values are all 0. Throws TransferFailure when a
// transformed thickness would divide by a modulus of 0.
void GenerateLayerTrelkType(const VaskModelObj& model, VaskPropAreaSectObj& section);

}  // namespace vtt
