#include "tools/rcvsim/FileStore.h"

#include <algorithm>

namespace rcvsim {

bool FileStore::Create(const std::string& path, double time) {
    return files_.emplace(path, StoredFile{path, {}, time, time}).second;
}

bool FileStore::Remove(std::string_view path) {
    const auto it = files_.find(path);
    if (it == files_.end()) return false;
    files_.erase(it);
    return true;
}

bool FileStore::Append(std::string_view path, std::string_view bytes, double time) {
    const auto it = files_.find(path);
    if (it == files_.end()) return false;
    auto& file = it->second;
    if (file.content.size() + bytes.size() > kMaxFileBytes) return false;
    file.content.append(bytes);
    file.mtime = time;
    return true;
}

void FileStore::Put(const std::string& path, std::string content, double time) {
    files_.insert_or_assign(path, StoredFile{path, std::move(content), time, time});
}

const StoredFile* FileStore::Find(std::string_view path) const {
    const auto it = files_.find(path);
    return it == files_.end() ? nullptr : &it->second;
}

std::vector<const StoredFile*> FileStore::List(std::string_view dir) const {
    std::vector<const StoredFile*> out;
    for (const auto& [path, file] : files_)
        if (path.compare(0, dir.size(), dir) == 0) out.push_back(&file);
    std::stable_sort(out.begin(), out.end(),
                     [](const StoredFile* a, const StoredFile* b) { return a->ctime < b->ctime; });
    return out;
}

void FileStore::RemoveAll(std::string_view dir) {
    std::erase_if(files_, [&](const auto& f) { return f.first.compare(0, dir.size(), dir) == 0; });
}

std::size_t FileStore::TotalBytes() const {
    std::size_t total = 0;
    for (const auto& [path, file] : files_) total += file.content.size();
    return total;
}

}  // namespace rcvsim
