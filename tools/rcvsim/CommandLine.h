#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace rcvsim {

// The textual side of the command language: splitting lines into commands and arguments,
// quotes, and the target form "<path>[&<attribute>][:on|:{args}]".
struct Target {
    std::string path;       // normalised: no leading "/", no "/par/" prefix, "//" aliases resolved
    std::string attribute;  // after "&", e.g. "size" or "[name,size,time]"; empty when absent
    std::string option;     // after ":", e.g. "on" or "{0,100}"; empty when absent
    bool quoted = false;    // the path was written between double quotes

    bool On() const { return option == "on"; }
};

class CommandLine {
public:
    // Splits at `sep` outside double quotes, braces and brackets; empty pieces are kept.
    static std::vector<std::string> SplitTopLevel(std::string_view text, char sep);
    // "a;b" -> commands; whitespace around each command is dropped.
    static std::vector<std::string> SplitJoined(std::string_view line);
    // "print,rcv/model" -> word "print" and the argument list.
    static std::string Word(std::string_view command);
    static std::vector<std::string> Arguments(std::string_view command);
    static std::string Unquote(std::string_view text);
    static std::string Trim(std::string_view text);
    static std::string NormalizePath(std::string_view path);
    static Target ParseTarget(std::string_view argument);
    // "{a,b}" -> "a,b"; text without enclosing braces is returned unchanged.
    static std::string StripBraces(std::string_view text);
    static bool StartsWith(std::string_view text, std::string_view prefix) {
        return text.substr(0, prefix.size()) == prefix;
    }
};

}  // namespace rcvsim
