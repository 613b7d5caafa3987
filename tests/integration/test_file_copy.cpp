// Receiver files copied through the file copier against the simulator.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "SimLink.h"
#include "platform/basekit/CCommException.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/receiver/CReceiverFileReader.h"
#include "fenklib/receiver/CReceiverFileWriter.h"

using fenktest::SimLink;

namespace {

bool Finished(const devio::IFileCopier& copier) {
    return copier.DoneEvent().Wait(60000).kind == basekit::WaitResult::Signalled;
}

TEST(FileCopy, IntoMemoryAndIntoAFile) {
    SimLink link;
    const auto copier = devio::CReceiverFileReader::CreateCopier(link.Receiver());
    devio::COverlapped progress;
    copier->SetProgressNotice(devio::INotice::CreateInstance(progress));
    copier->Start(L"/com/a/script/version", L"");
    ASSERT_TRUE(Finished(*copier));
    EXPECT_EQ(copier->Error(), 0u) << copier->ErrorText().ToUtf8();
    EXPECT_EQ(copier->Data(), "name=FNK UHF;version=2.1.4;description=UHF radio modem driver");
    EXPECT_TRUE(progress.Event().IsSet());

    devio::CVokReceiverMate mate(link.Receiver());
    const basekit::ustring log = L"/log/" + mate.GetCurrentFile(L'a');
    ASSERT_NE(log, L"/log/");
    mate.SendEvent(L"_DSC", L"a longer file");
    QTemporaryDir dir;
    const QString local = dir.filePath(QStringLiteral("copy.fnk"));
    copier->Start(log, basekit::ustring::FromQString(local));
    ASSERT_TRUE(Finished(*copier));
    EXPECT_EQ(copier->Error(), 0u) << copier->ErrorText().ToUtf8();
    QFile file(local);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_EQ(static_cast<std::uint64_t>(bytes.size()), copier->Progress().total);
    EXPECT_TRUE(bytes.contains("_DSC")) << "the event went into the current log file";
}

TEST(FileCopy, FailuresAreReported) {
    SimLink link;
    const auto copier = devio::CReceiverFileReader::CreateCopier(link.Receiver());
    copier->Start(L"/log/no-such-file", L"");
    ASSERT_TRUE(Finished(*copier));
    EXPECT_NE(copier->Error(), 0u);

    rcvsim::FaultPlan slow;
    slow.latencyMs = 2000;
    link.sim->SetFaults(slow);
    copier->Start(L"/com/a/script/version", L"");
    copier->Cancel();
    ASSERT_TRUE(Finished(*copier));
    EXPECT_EQ(copier->Error(), basekit::kErrorCancelled);
}

QString WriteLocal(const QTemporaryDir& dir, const std::string& bytes) {
    const QString path = dir.filePath(QStringLiteral("local.bin"));
    QFile file(path);
    file.open(QIODevice::WriteOnly | QIODevice::Truncate);
    file.write(bytes.data(), static_cast<qint64>(bytes.size()));
    return path;
}

std::string EveryByte(std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>((i * 7 + i / 256) & 0xFF);
    return bytes;
}

// Uploaded, then downloaded again: the same bytes, whatever they are and however many blocks.
TEST(FileUpload, RoundTripByteForByte) {
    struct Row {
        const char* legend;
        const wchar_t* path;
        std::string bytes;
    };
    const Row rows[] = {
        {"an empty file", L"/log/empty.bin", ""},
        {"exactly one block", L"/log/one.bin", EveryByte(2048)},
        {"every byte value over several blocks and a short last one", L"/log/many.bin", EveryByte(5000)},
        {"replacing a driver file", L"/com/a/script/version", "name=New;version=3.0"},
    };
    SimLink link;
    const QTemporaryDir dir;
    const auto uploader = devio::CReceiverFileWriter::CreateUploader(link.Receiver());
    const auto copier = devio::CReceiverFileReader::CreateCopier(link.Receiver());
    for (const Row& row : rows) {
        uploader->Start(basekit::ustring::FromQString(WriteLocal(dir, row.bytes)), row.path);
        ASSERT_TRUE(Finished(*uploader)) << row.legend;
        ASSERT_EQ(uploader->Error(), 0u) << row.legend << ": " << uploader->ErrorText().ToUtf8();
        EXPECT_EQ(uploader->Progress().done, row.bytes.size()) << row.legend;
        copier->Start(row.path, L"");
        ASSERT_TRUE(Finished(*copier)) << row.legend;
        EXPECT_EQ(copier->Data(), row.bytes) << row.legend;
    }
}

// A cancelled or refused upload leaves the receiver's file as it was: absent, or the old one.
TEST(FileUpload, CancelledOrRefusedLeavesNothing) {
    SimLink link;
    rcvsim::FaultPlan slow;
    slow.latencyMs = 40;   // keeps the upload going while the test cancels it
    link.sim->SetFaults(slow);
    const QTemporaryDir dir;
    const auto uploader = devio::CReceiverFileWriter::CreateUploader(link.Receiver());
    devio::COverlapped progress;
    uploader->SetProgressNotice(devio::INotice::CreateInstance(progress));
    const QString local = WriteLocal(dir, EveryByte(64 * 1024));

    struct Row {
        const char* legend;
        const wchar_t* path;
        unsigned error;
    };
    const Row rows[] = {
        {"cancelled after its first block", L"/log/big.bin", basekit::kErrorCancelled},
        {"cancelled while replacing the driver's version", L"/com/a/script/version", basekit::kErrorCancelled},
        {"refused: not a folder the receiver lets the host write", L"/rcv/big.bin", basekit::kErrorInvalidData},
    };
    devio::CVokReceiverMate mate(link.Receiver());
    for (const Row& row : rows) {
        const auto sizeOf = [&]() -> long long {
            try {
                return static_cast<long long>(mate.GetFileSize(row.path));
            } catch (const basekit::CCommException&) {
                return -1;
            }
        };
        const long long before = sizeOf();
        progress.Event().Reset();
        uploader->Start(basekit::ustring::FromQString(local), row.path);
        if (row.error == basekit::kErrorCancelled) {
            for (int i = 0; i < 1000 && uploader->Progress().done == 0; ++i) {
                progress.Event().Wait(60000);
                progress.Event().Reset();
            }
            ASSERT_GT(uploader->Progress().done, 0u) << row.legend;
            uploader->Cancel();
        }
        ASSERT_TRUE(Finished(*uploader)) << row.legend;
        EXPECT_EQ(uploader->Error(), row.error) << row.legend;
        EXPECT_EQ(sizeOf(), before) << row.legend;
    }
}

}  // namespace
