// Receiver files copied through the file copier against the simulator.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "SimLink.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/receiver/CReceiverFileReader.h"

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
    const QString local = dir.filePath(QStringLiteral("copy.jps"));
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

}  // namespace
