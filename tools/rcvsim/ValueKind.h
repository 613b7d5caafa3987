#pragma once
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace rcvsim {

// How a parameter's value is written, checked and stored. A "set," value goes through
// Canonical(): nullopt means the firmware rejects it.
struct ValueKind {
    enum class Type {
        Text,       // free text, optionally quoted on input
        Int,        // decimal integer within [min, max]
        Real,       // decimal real within [min, max], printed with `decimals` digits
        Keyword,    // one word of `words`
        PortRef,    // "/" followed by a port keyword, e.g. "/dev/null"
        FlagPair,   // "{y,n}": two flags, each y or n
        SwitchPair, // "{off,on}": two on/off words
        GeoCoord,   // {W84,N..d..m..s,E...d..m..s,h}
        XyzCoord,   // {W84,x,y,z}
        CorrMode,   // "mpnew"/"normal" on input (also on/off), reported as on/off
        List,       // a braced list, kept as written
    };
    Type type = Type::Text;
    double min = 0;
    double max = 0;
    int decimals = 2;
    std::span<const std::string_view> words{};

    std::optional<std::string> Canonical(std::string_view input) const;
    const char* Name() const;  // short type word used by "list,"

    static ValueKind Text() { return {}; }
    static ValueKind Int(double lo, double hi) { return {Type::Int, lo, hi}; }
    static ValueKind Real(double lo, double hi, int decimals = 2) {
        return {Type::Real, lo, hi, decimals};
    }
    static ValueKind Words(std::span<const std::string_view> w) {
        ValueKind k{Type::Keyword};
        k.words = w;
        return k;
    }
    static ValueKind Of(Type t) { return {t}; }
};

}  // namespace rcvsim
