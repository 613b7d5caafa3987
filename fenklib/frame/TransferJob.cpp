#include "fenklib/frame/TransferJob.h"

#include "fenklib/receiver/CReceiverFileReader.h"
#include "fenklib/receiver/CReceiverFileWriter.h"
#include "platform/basekit/CWinException.h"
#include "platform/devio/INotice.h"

CTransfer::CTransfer(CJobContext& job, std::uint64_t total) : m_job(job), m_total(total) {}

std::string CTransfer::Download(const basekit::ustring& receiverPath, const basekit::ustring& localPath) {
    const auto copier = devio::CReceiverFileReader::CreateCopier(m_job.Receiver());
    return Run(*copier, receiverPath, localPath, receiverPath, receiverPath);
}

void CTransfer::Upload(const basekit::ustring& localPath, const basekit::ustring& receiverPath, const basekit::ustring& named) {
    // An uploader is a copier the other way round: Start(local source, receiver target).
    const auto uploader = devio::CReceiverFileWriter::CreateUploader(m_job.Receiver());
    Run(*uploader, localPath, receiverPath, receiverPath, named.empty() ? localPath : named);
}

std::string CTransfer::Run(devio::IFileCopier& copier, const basekit::ustring& source, const basekit::ustring& target,
                           const basekit::ustring& receiverPath, const basekit::ustring& named) {
    const devio::COverlapped piece;
    copier.SetProgressNotice(devio::INotice::CreateInstance(piece));
    copier.Start(source, target);
    Report(copier, receiverPath);
    for (;;) {
        // The lowest index wins: an ended copy is not mistaken for one more piece.
        const basekit::WaitResult w = basekit::CEvent::WaitAny({&copier.DoneEvent(), &m_job.StopEvent(), &piece.Event()}, basekit::kInfinite);
        if (w.kind != basekit::WaitResult::Signalled)
            throw basekit::CWinException("CTransfer", __LINE__, L"WaitForMultipleObjects", basekit::kErrorInternal);
        if (w.index == 0) break;
        if (w.index == 1) {
            copier.Cancel();
            copier.DoneEvent().Wait(basekit::kInfinite);
            throw basekit::CWinException("CTransfer", __LINE__, receiverPath, basekit::kErrorCancelled);
        }
        piece.Event().Reset();
        Report(copier, receiverPath);
    }
    if (copier.Error() != 0)
        throw basekit::CWinException("CTransfer", __LINE__, named + L": " + copier.ErrorText(), copier.Error());
    Report(copier, receiverPath);
    m_before += copier.Progress().done;
    return copier.Data();
}

void CTransfer::Report(const devio::IFileCopier& copier, const basekit::ustring& receiverPath) const {
    const devio::COPY_PROGRESS p = copier.Progress();
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - m_started).count();
    JOB_PROGRESS progress;
    progress.done = m_before + p.done;
    progress.total = m_total ? m_total : p.total;
    progress.step = receiverPath;
    progress.bytesPerSecond = seconds > 0 ? static_cast<double>(progress.done) / seconds : 0;
    m_job.Progress(std::move(progress));
}
