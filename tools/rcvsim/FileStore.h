#pragma once
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace rcvsim {

struct StoredFile {
    std::string path;     // absolute, e.g. "/log/log0614a.jps"
    std::string content;  // any bytes
    double mtime = 0;     // simulated UTC seconds of the last change
    double ctime = 0;     // simulated UTC seconds of the creation
};

// The receiver's flash file system: log files under /log/ and the script-port driver files
// under /com/a/. Files are kept in memory; a file grows only up to kMaxFileBytes.
class FileStore {
public:
    static constexpr std::size_t kMaxFileBytes = 16u * 1024 * 1024;

    bool Create(const std::string& path, double time);
    bool Remove(std::string_view path);
    bool Append(std::string_view path, std::string_view bytes, double time);
    void Put(const std::string& path, std::string content, double time);
    const StoredFile* Find(std::string_view path) const;
    // Files whose path starts with `dir` (e.g. "/log/"), oldest first by creation, then name.
    std::vector<const StoredFile*> List(std::string_view dir) const;
    void RemoveAll(std::string_view dir);
    std::size_t Count() const { return files_.size(); }
    std::size_t TotalBytes() const;

    static std::string Name(std::string_view path) {
        return std::string(path.substr(path.rfind('/') + 1));
    }

private:
    std::map<std::string, StoredFile, std::less<>> files_;
};

}  // namespace rcvsim
