// The file copier streaming into "<target>.part", renamed only when whole; cancel or a refusal
// leaves no part and an older target untouched. The source holds at half way until let go.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

#include "platform/basekit/CCommException.h"
#include "platform/basekit/CWinException.h"
#include "platform/devio/IFileCopier.h"

namespace {

namespace fs = std::filesystem;

enum class Then { Finish, Cancel, Refuse };
class CGatedSource final : public basekit::CRefCounted<devio::IFileBlockReader> {
public:
    CGatedSource(std::uint64_t size, std::uint64_t holdAt) : m_size(size), m_holdAt(holdAt) {}

    std::uint64_t FileSize(const basekit::ustring&, basekit::CEvent&) override { return m_size; }
    std::string ReadBlock(const basekit::ustring& path, std::uint64_t offset, std::uint64_t length, basekit::CEvent& cancel) override {
        if (offset >= m_holdAt && !m_held) {
            m_held = true;
            reached.Set();
            basekit::CEvent::WaitAny({&go, &cancel}, 60000);
            if (cancel.IsSet()) throw basekit::CWinException("test", __LINE__, path, basekit::kErrorCancelled);
            if (refuse) throw basekit::CCommException("test", __LINE__, L"print", L"{2,,wrong 1st parameter}", L"test");
        }
        return Bytes(offset, length);
    }
    static std::string Bytes(std::uint64_t offset, std::uint64_t length) {
        std::string out(length, '\0');
        for (std::uint64_t i = 0; i < length; ++i) out[i] = static_cast<char>((offset + i) * 131 % 251);
        return out;
    }
    basekit::CEvent reached{basekit::CEvent::Mode::Manual};
    basekit::CEvent go{basekit::CEvent::Mode::Manual};
    bool refuse = false;

private:
    std::uint64_t m_size, m_holdAt;
    bool m_held = false;
};

std::string ReadAll(const fs::path& p) {
    std::ifstream in(p, std::ios::binary);
    return fs::exists(p) ? std::string(std::istreambuf_iterator<char>(in), {}) : "";
}
TEST(FileCopier, StreamsThroughAPartFile) {
    struct Row { const char* legend; Then then; bool targetBefore; unsigned error; };
    const Row rows[] = {
        {"a whole copy replaces the old file", Then::Finish, true, 0},
        {"cancel in the middle leaves nothing", Then::Cancel, false, basekit::kErrorCancelled},
        {"a refusal in the middle keeps the old file", Then::Refuse, true, basekit::kErrorInvalidData},
    };
    constexpr std::uint64_t kSize = 300000;
    const fs::path dir = fs::temp_directory_path() / ("fenk-copier-" + std::to_string(::getpid()));
    for (const Row& row : rows) {
        fs::remove_all(dir);
        fs::create_directories(dir);
        const fs::path target = dir / "copy.fnk";
        if (row.targetBefore) std::ofstream(target) << "old";
        basekit::CSmartPtr<CGatedSource> source(new CGatedSource(kSize, kSize / 2));
        source->refuse = row.then == Then::Refuse;
        const auto copier = devio::IFileCopier::CreateInstance(source);
        copier->Start(basekit::ustring(L"/log/x"), basekit::ustring::FromUtf8(target.string()));
        ASSERT_EQ(source->reached.Wait(60000).kind, basekit::WaitResult::Signalled) << row.legend;
        EXPECT_TRUE(fs::exists(dir / "copy.fnk.part")) << row.legend;
        EXPECT_EQ(ReadAll(target), row.targetBefore ? "old" : "") << row.legend;
        if (row.then == Then::Cancel) copier->Cancel();
        source->go.Set();
        ASSERT_EQ(copier->DoneEvent().Wait(60000).kind, basekit::WaitResult::Signalled) << row.legend;
        EXPECT_EQ(copier->Error(), row.error) << row.legend;
        EXPECT_FALSE(fs::exists(dir / "copy.fnk.part")) << row.legend;
        const std::string expected = row.then == Then::Finish ? CGatedSource::Bytes(0, kSize) : row.targetBefore ? "old" : "";
        EXPECT_EQ(ReadAll(target), expected) << row.legend;
    }
    fs::remove_all(dir);
}

}  // namespace
