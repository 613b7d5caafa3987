#include "tools/rcvsim/ParamTree.h"

#include <algorithm>

namespace rcvsim {

void ParamTree::Add(const std::string& path, const ValueKind& kind, std::string value,
                    unsigned flags) {
    Param p{kind, value, value, flags, nextSeq_++};
    params_.insert_or_assign(path, std::move(p));
}

bool ParamTree::InSubtree(std::string_view key, std::string_view path) const {
    if (path.empty()) return true;
    if (key.size() < path.size() || key.substr(0, path.size()) != path) return false;
    return key.size() == path.size() || key[path.size()] == '/';
}

void ParamTree::RemoveSubtree(std::string_view path) {
    for (auto it = params_.lower_bound(path);
         it != params_.end() && it->first.compare(0, path.size(), path) == 0;) {
        if (InSubtree(it->first, path))
            it = params_.erase(it);
        else
            ++it;
    }
}

const Param* ParamTree::Find(std::string_view path) const {
    const auto it = params_.find(path);
    return it == params_.end() ? nullptr : &it->second;
}

Param* ParamTree::Find(std::string_view path) {
    const auto it = params_.find(path);
    return it == params_.end() ? nullptr : &it->second;
}

bool ParamTree::IsNode(std::string_view path) const {
    if (path.empty()) return !params_.empty();
    const std::string prefix = std::string(path) + "/";
    const auto it = params_.lower_bound(prefix);
    return it != params_.end() && it->first.compare(0, prefix.size(), prefix) == 0;
}

std::vector<std::string> ParamTree::Children(std::string_view path) const {
    const std::string prefix = path.empty() ? std::string() : std::string(path) + "/";
    std::vector<std::pair<std::uint32_t, std::string>> found;
    for (auto it = params_.lower_bound(prefix);
         it != params_.end() && it->first.compare(0, prefix.size(), prefix) == 0; ++it) {
        const std::string rest = it->first.substr(prefix.size());
        std::string name = rest.substr(0, rest.find('/'));
        auto same = std::find_if(found.begin(), found.end(),
                                 [&](const auto& f) { return f.second == name; });
        if (same == found.end())
            found.emplace_back(it->second.seq, std::move(name));
        else
            same->first = std::min(same->first, it->second.seq);
    }
    std::sort(found.begin(), found.end());
    std::vector<std::string> names;
    for (auto& f : found) names.push_back(std::move(f.second));
    return names;
}

std::vector<std::pair<std::string, const Param*>> ParamTree::Leaves(std::string_view path) const {
    std::vector<std::pair<std::string, const Param*>> leaves;
    for (auto it = params_.lower_bound(path); it != params_.end(); ++it) {
        if (it->first.compare(0, path.size(), path) != 0) break;
        if (InSubtree(it->first, path)) leaves.emplace_back(it->first, &it->second);
    }
    return leaves;
}

void ParamTree::Reset(std::string_view path, unsigned keepFlags) {
    for (auto it = params_.lower_bound(path); it != params_.end(); ++it) {
        if (it->first.compare(0, path.size(), path) != 0) break;
        if (!InSubtree(it->first, path) || (it->second.flags & keepFlags) != 0) continue;
        it->second.value = it->second.initial;
    }
}

}  // namespace rcvsim
