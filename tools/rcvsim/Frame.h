#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace rcvsim {

// The receiver-to-host frames of the wire protocol:
//   @<kind><id>,<status>,<length>:<payload>*<check>\r\n
class Frame {
public:
    static std::uint16_t Fletcher16(std::string_view bytes);
    static std::string Make(char kind, std::string_view id, int status, std::string_view payload);
    static std::string Reply(std::string_view tag, int status, std::string_view payload) {
        return Make('R', tag, status, payload);
    }
    static std::string Message(std::string_view name, std::string_view payload) {
        return Make('M', name, 0, payload);
    }
    static std::string Event(int number) { return Make('E', std::to_string(number), 0, {}); }
    // Sent in place of the rest of a reply the host aborted.
    static std::string CutMark(std::string_view tag) { return Make('C', tag, 0, {}); }
};

}  // namespace rcvsim
