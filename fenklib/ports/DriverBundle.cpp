#include "fenklib/ports/DriverBundle.h"

#include <QDir>
#include <algorithm>
#include <QFileInfo>

using basekit::ustring;

namespace {

constexpr auto kVersionFile = "version";

void AddFiles(const QDir& dir, const ustring& targetDir, std::vector<BUNDLE_FILE>& files) {
    for (const QFileInfo& info : dir.entryInfoList(QDir::Files, QDir::Name))
        files.push_back({ustring::FromQString(info.absoluteFilePath()), targetDir + ustring::FromQString(info.fileName()),
                         static_cast<std::uint64_t>(info.size())});
}

}  // namespace

std::vector<BUNDLE_FILE> ListDriverBundle(const QString& folder, const ustring& portKeyword) {
    const QDir dir(folder);
    if (folder.isEmpty() || !QFileInfo(dir.filePath(QString::fromLatin1(kVersionFile))).isFile()) return {};
    std::vector<BUNDLE_FILE> files;
    AddFiles(dir, L"/" + portKeyword + L"/script/", files);
    const QDir profiles(dir.filePath(QStringLiteral("profiles")));
    if (profiles.exists()) AddFiles(profiles, L"/" + portKeyword + L"/profile/", files);
    const auto version = std::find_if(files.begin(), files.end(),
                                      [&](const BUNDLE_FILE& f) { return f.target == L"/" + portKeyword + L"/script/version"; });
    std::rotate(version, version + 1, files.end());
    return files;
}
