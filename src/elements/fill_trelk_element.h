// Element groups and elements.
//
// Every element belongs to a group of one kind of member and one material, and every group
// starts with a leading element record that stands for no source object. Frames go to
// six groups in a fixed order (concrete column, beam, brace; steel column, beam, brace);
// each frame's element refers to the compound that its releases and hinges call for.
// Shell areas follow in eight more groups: thin and layered walls, general walls, slabs
// and ramps, and the embedded beams along wall edges where frames join.
// Element and group numbers go back on the source objects for the later steps.
#pragma once

#include <cstdint>
#include <string>

namespace vtt {

class TrelkStore;
class VaskModelObj;

void FillTrelkElements(const VaskModelObj& model, TrelkStore& store);

void FillTrelkElemGroupRecord(TrelkStore& store, std::int32_t group, const std::string& name,
                              int kind, int subKind, std::int32_t firstElem,
                              std::int32_t lastElem);

void FillTrelkElemRecord(TrelkStore& store, std::int32_t elem, std::int32_t group,
                         std::int32_t prevElem, std::int32_t nextElem, int componentSource,
                         int componentKind, int option, std::int32_t component,
                         std::int32_t node1, std::int32_t node2, std::int32_t node3,
                         std::int32_t node4, double angle);

}  // namespace vtt
