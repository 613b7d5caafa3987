#include <cstdio>
#include <fstream>
#include <mutex>
#include <thread>

#include "platform/basekit/CWinException.h"
#include "platform/devio/IFileCopier.h"

namespace devio {

namespace {

constexpr std::uint64_t kPieceBytes = 32 * 1024;
constexpr unsigned kPieceTimeoutMs = 30000;
constexpr unsigned kRefused = basekit::kErrorInvalidData;   // the receiver answered with an error reply

class CFileCopier final : public basekit::CRefCounted<IFileCopier> {
public:
    explicit CFileCopier(CSmartPtr<IReceiver> receiver) : m_receiver(std::move(receiver)) { m_done.Set(); }
    ~CFileCopier() override { Stop(); }

    void Start(const ustring& receiverPath, const ustring& localPath) override {
        Stop();
        {
            const std::lock_guard lock(m_mutex);
            m_progress = {};
            m_error = 0;
            m_errorText.clear();
            m_data.clear();
        }
        m_cancel.Reset();
        m_done.Reset();
        m_thread = std::thread([this, receiverPath, localPath] { Run(receiverPath, localPath); });
    }
    void SetProgressNotice(const CSmartPtr<INotice>& notice) override {
        const std::lock_guard lock(m_mutex);
        m_notice = notice;
    }
    void Cancel() override { m_cancel.Set(); }
    const basekit::CEvent& DoneEvent() const override { return m_done; }
    COPY_PROGRESS Progress() const override {
        const std::lock_guard lock(m_mutex);
        return m_progress;
    }
    unsigned Error() const override {
        const std::lock_guard lock(m_mutex);
        return m_error;
    }
    ustring ErrorText() const override {
        const std::lock_guard lock(m_mutex);
        return m_errorText;
    }
    std::string Data() const override {
        const std::lock_guard lock(m_mutex);
        return m_data;
    }

private:
    void Stop() {
        m_cancel.Set();
        if (m_thread.joinable()) m_thread.join();
    }

    // One command, waited for here; throws CWinException with the code of the failure.
    std::string Ask(const ustring& command) {
        const COverlapped completion;
        const CSmartPtr<CCommandReply> reply(new CCommandReply());
        const CSmartPtr<ICommandChannel> channel = m_receiver->GetCommandChannel();
        const CommandId id = channel->IssueCommand(command, true, reply, INotice::CreateInstance(completion), kPieceTimeoutMs, true);
        const basekit::WaitResult wait = basekit::CEvent::WaitAny({&completion.Event(), &m_cancel}, kPieceTimeoutMs);
        if (wait.kind != basekit::WaitResult::Signalled || wait.index != 0) {
            channel->Cancel(id);
            throw basekit::CWinException("FileCopier", __LINE__, command,
                                         wait.kind == basekit::WaitResult::Timeout ? basekit::kErrorTimeout : basekit::kErrorCancelled);
        }
        CCommandReply::Result result = reply->Take();
        if (result.linkError) throw basekit::CWinException("FileCopier", __LINE__, command, result.linkError);
        if (result.status < 0) throw basekit::CWinException("FileCopier", __LINE__, command + L" " + result.text, kRefused);
        return std::move(result.payload);
    }

    void Run(const ustring& path, const ustring& localPath) {
        try {
            const std::uint64_t total = std::stoull(Ask(L"print,\"" + path + L"\"&size"));
            {
                const std::lock_guard lock(m_mutex);
                m_progress.total = total;
            }
            std::string bytes;
            bytes.reserve(total);
            while (bytes.size() < total) {
                const std::uint64_t piece = std::min(kPieceBytes, total - bytes.size());
                const std::string got = Ask(ustring::Format(L"print,\"%s\"&content:{%llu,%llu}", path,
                                                            static_cast<unsigned long long>(bytes.size()),
                                                            static_cast<unsigned long long>(piece)));
                if (got.empty()) break;   // the file shrank while being read
                bytes += got;
                Report(bytes.size());
            }
            Finish(bytes, localPath);
        } catch (const basekit::CWinException& e) {
            Fail(e.Code(), e.GetMessage());
        } catch (const std::exception& e) {
            Fail(kRefused, ustring::FromUtf8(e.what()));
        }
        m_done.Set();
    }

    void Report(std::uint64_t done) {
        CSmartPtr<INotice> notice;
        {
            const std::lock_guard lock(m_mutex);
            m_progress.done = done;
            notice = m_notice;
        }
        if (notice) notice->Signal();
    }

    void Finish(std::string& bytes, const ustring& localPath) {
        if (!localPath.empty()) {
            const std::string target = localPath.ToUtf8();
            const std::string partial = target + ".part";
            {
                std::ofstream out(partial, std::ios::binary | std::ios::trunc);
                out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
                if (!out) throw basekit::CWinException("FileCopier", __LINE__, localPath, basekit::kErrorIoDevice);
            }
            if (std::rename(partial.c_str(), target.c_str()) != 0)
                throw basekit::CWinException("FileCopier", __LINE__, localPath, basekit::SystemErrorFromErrno(errno));
            return;
        }
        const std::lock_guard lock(m_mutex);
        m_data = std::move(bytes);
    }

    void Fail(unsigned code, const ustring& text) {
        const std::lock_guard lock(m_mutex);
        m_error = code;
        m_errorText = text;
    }

    CSmartPtr<IReceiver> m_receiver;
    mutable std::mutex m_mutex;
    COPY_PROGRESS m_progress;
    unsigned m_error = 0;
    ustring m_errorText;
    std::string m_data;
    CSmartPtr<INotice> m_notice;
    basekit::CEvent m_cancel{basekit::CEvent::Mode::Manual};
    basekit::CEvent m_done{basekit::CEvent::Mode::Manual};
    std::thread m_thread;
};

}  // namespace

CSmartPtr<IFileCopier> IFileCopier::CreateInstance(const CSmartPtr<IReceiver>& receiver) {
    return CSmartPtr<IFileCopier>(new CFileCopier(receiver));
}

}  // namespace devio
