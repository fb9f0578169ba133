// How the transfer speaks to the user.
//
// The transfer shows a handful of messages with exact words ("Transfer Complete", the two
// file error messages, ...). They go through this one interface, so the command line can
// print them and a test can collect them.
#pragma once

#include <string>
#include <vector>

namespace vtt {

enum class MessageIcon { None, Critical };

struct UserMessage {
  std::string title;  // empty when the message has none
  std::string text;   // lines separated by '\n'
  MessageIcon icon = MessageIcon::None;
};

class UserMessages {
 public:
  virtual ~UserMessages() = default;
  virtual void Show(const UserMessage& message) = 0;
  // Sounded ahead of a file error message when the structure asks for it.
  virtual void Beep() {}
};

// Keeps every message, in order; for tests and for callers that report at the end.
class CollectedMessages final : public UserMessages {
 public:
  void Show(const UserMessage& message) override { messages.push_back(message); }
  void Beep() override { ++beeps; }
  std::vector<UserMessage> messages;
  int beeps = 0;
};

}  // namespace vtt
