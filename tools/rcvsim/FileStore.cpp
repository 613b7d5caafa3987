#include "tools/rcvsim/FileStore.h"

#include <algorithm>
#include <cstring>

namespace rcvsim {

namespace {

std::uint64_t SplitMix(std::uint64_t x) {
    x += 0x9E3779B97F4A7C15ull;
    x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9ull;
    x = (x ^ (x >> 27)) * 0x94D049BB133111EBull;
    return x ^ (x >> 31);
}

std::uint64_t NameHash(std::string_view name) {
    std::uint64_t h = 0xCBF29CE484222325ull;   // FNV-1a
    for (const char c : name) h = (h ^ static_cast<unsigned char>(c)) * 0x100000001B3ull;
    return h;
}

// Byte i of a generated file is byte i % 8 of SplitMix(hash of the name + i / 8): any piece
// can be computed on its own, every byte value occurs, and two files differ.
void Generate(std::string_view name, std::uint64_t offset, char* out, std::size_t n) {
    const std::uint64_t base = NameHash(name);
    for (std::size_t i = 0; i < n;) {
        const std::uint64_t at = offset + i;
        const std::uint64_t value = SplitMix(base + at / 8);
        char word[8];
        for (int b = 0; b < 8; ++b) word[b] = static_cast<char>(value >> (8 * b));
        const std::size_t skip = static_cast<std::size_t>(at % 8), take = std::min<std::size_t>(8 - skip, n - i);
        std::memcpy(out + i, word + skip, take);
        i += take;
    }
}

}  // namespace

std::string StoredFile::Read(std::uint64_t offset, std::uint64_t length) const {
    const std::uint64_t size = Size();
    if (offset >= size) return {};
    length = std::min(length, size - offset);
    std::string out(static_cast<std::size_t>(length), '\0');
    const std::uint64_t fromGenerated = offset < generated ? std::min(length, generated - offset) : 0;
    Generate(FileStore::Name(path), offset, out.data(), static_cast<std::size_t>(fromGenerated));
    if (fromGenerated < length) {
        const std::uint64_t at = offset + fromGenerated - generated;
        content.copy(out.data() + fromGenerated, static_cast<std::size_t>(length - fromGenerated),
                     static_cast<std::size_t>(at));
    }
    return out;
}

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

void FileStore::PutGenerated(const std::string& path, std::uint64_t size, double ctime, double mtime) {
    StoredFile file{path, {}, mtime, ctime};
    file.generated = size;
    files_.insert_or_assign(path, std::move(file));
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

std::uint64_t FileStore::TotalBytes() const {
    std::uint64_t total = 0;
    for (const auto& [path, file] : files_) total += file.Size();
    return total;
}

}  // namespace rcvsim
