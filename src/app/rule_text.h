// The rule text: what the user is told a transfer does, in the words the transfer form
// shows in its log box. The other rules of the transfer cite its numbered rules.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace vtt {

// The lines of the rule text in order, without the blank lines between the rules.
std::span<const std::string_view> RuleTextLines();

// Whether `line` opens a numbered rule ("1.  This command ...", "16. The Trelk ..."): it
// starts with decimal digits followed by a full stop.
bool OpensNumberedRule(std::string_view line);

// The whole rule text: every line followed by a line break, and one blank line between
// two numbered rules.
std::string TransferRuleText();

}  // namespace vtt
