// The literal searches behind the indexes, for tests.
//
// Look-ups by label answer what a search from the first entry answers: the first entry
// with exactly that label. The source model's lists and the model file host find it
// through hash tables; with literal look-ups on, they search from the first entry instead,
// as slowly as that is. Tests turn it on to show that both ways give the same structure
// byte for byte; nothing else does.
#pragma once

namespace vtt {

void SetLiteralLookUps(bool enabled);
bool LiteralLookUps();

}  // namespace vtt
