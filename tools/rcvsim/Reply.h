#pragma once
#include <string>

namespace rcvsim {

// What the receiver does after a command line. Most commands just answer; a few restart the
// receiver (no answer, event 7 follows) or drop the link they arrived on.
enum class ReplyEffect { None, NoAnswer, DropLink };

struct Reply {
    int status = 0;            // 0 success, negative for an error reply
    std::string text;          // the reply payload
    ReplyEffect effect = ReplyEffect::None;
    int dropAfterMs = 0;       // with DropLink: delay before the link is closed

    bool Ok() const { return status >= 0; }

    static Reply Success(std::string text = {}) { return Reply{0, std::move(text)}; }
    static Reply Error(std::string reason) { return Reply{-2, "{2,," + reason + "}"}; }
    static Reply WrongCommand() { return Error("wrong command"); }
    static Reply WrongFirst() { return Error("wrong 1st parameter"); }
    static Reply WrongSecond() { return Error("wrong 2nd parameter"); }
    static Reply Silent() { return Reply{0, {}, ReplyEffect::NoAnswer}; }
};

}  // namespace rcvsim
