#pragma once
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tools/rcvsim/ValueKind.h"

namespace rcvsim {

enum ParamFlag : unsigned {
    kReadOnly = 1u,     // "set," refuses it: identity, versions, measured values
    kKeepOnReset = 2u,  // a port's line settings survive a restart, as on the hardware
};

struct Param {
    ValueKind kind;
    std::string value;
    std::string initial;
    unsigned flags = 0;
    std::uint32_t seq = 0;  // insertion order, so listings follow the firmware's order

    bool ReadOnly() const { return (flags & kReadOnly) != 0; }
};

// The receiver's parameters by path ("dev/ser/a/rate"), leaves only; inner nodes exist
// implicitly as prefixes of leaf paths.
class ParamTree {
public:
    void Add(const std::string& path, const ValueKind& kind, std::string value, unsigned flags = 0);
    void RemoveSubtree(std::string_view path);
    const Param* Find(std::string_view path) const;
    Param* Find(std::string_view path);
    bool IsNode(std::string_view path) const;
    // Immediate child names of a node, in insertion order.
    std::vector<std::string> Children(std::string_view path) const;
    // Every leaf at or below `path` ("" is the root), sorted by path.
    std::vector<std::pair<std::string, const Param*>> Leaves(std::string_view path) const;
    // Puts every leaf at or below `path` back to its initial value.
    void Reset(std::string_view path, unsigned keepFlags);
    std::size_t Size() const { return params_.size(); }

private:
    bool InSubtree(std::string_view key, std::string_view path) const;
    std::map<std::string, Param, std::less<>> params_;
    std::uint32_t nextSeq_ = 0;
};

}  // namespace rcvsim
