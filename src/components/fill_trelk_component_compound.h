// Compound components: what the element groups refer to.
//
// A frame compound strings parts along a member: a cross section or a FEMA component as
// the member part, and release components at released ends. Plain member compounds are
// made for every steel and concrete section; frames with end releases get a compound of
// their own (shared by frames of one section whose I ends are alike); embedded beams get
// theirs; wall and general-wall compounds join the wall sections and shear materials.
// Each number goes back on the source section or frame, so the elements only read it.
#pragma once

#include <cstdint>
#include <string>

namespace vtt {

class TrelkStore;
class VaskModelObj;

void FillTrelkCompoundComponents(const VaskModelObj& model, TrelkStore& store);

// A member compound of one part (lengths 1.0) or of two identical parts (lengths 0.5).
void FillTrelkCpdMemberRecord(TrelkStore& store, std::int32_t number, const std::string& name,
                              std::int32_t numberI2, int partSource, int partKind,
                              int component, int partShape, double weightPerLength,
                              bool onePart);

// A member with a release part at each released end that has a release component.
void FillTrelkCpdReleaseRecord(TrelkStore& store, std::int32_t number, const std::string& name,
                               std::int32_t numberI2, int partSource, int partKind,
                               int component, int releaseI, int releaseJ, int partShape,
                               double weightPerLength, bool isIReleased, bool isJReleased);

// An embedded beam: a release part on `releaseNumber`, then the embedded cross section.
void FillTrelkCpdEmbedRecord(TrelkStore& store, std::int32_t number, const std::string& name,
                             std::int32_t numberI2, int partKind, int component,
                             int releaseNumber, int partShape);

void FillTrelkCpdWallRecord(TrelkStore& store, std::int32_t number, const std::string& name,
                            std::int32_t numberI2, int wallSectionKind, int wallSection,
                            int shearMaterial, double thickness, double e, double unitWeight);

void FillTrelkCpdGWallRecord(TrelkStore& store, std::int32_t number, const std::string& name,
                             std::int32_t numberI2, int verticalSectionKind, int verticalSection,
                             int horizontalSection, int shearMaterial, double thickness,
                             double unitWeight);

}  // namespace vtt
