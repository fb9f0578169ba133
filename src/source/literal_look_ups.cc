#include "source/literal_look_ups.h"

namespace vtt {
namespace {

bool literal = false;

}  // namespace

void SetLiteralLookUps(bool enabled) { literal = enabled; }

bool LiteralLookUps() { return literal; }

}  // namespace vtt
