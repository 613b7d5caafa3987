#include "support/ScriptedReceiver.h"

#include "platform/basekit/CWinException.h"

namespace fenktest {

void CScriptedReceiver::Subscribe(const CSmartPtr<devio::INotice>& notice, unsigned event) {
    if (refuseSubscriptions)
        throw basekit::CWinException("ScriptedReceiver", __LINE__, L"devio::IReceiver::Subscribe", basekit::kErrorLinkLost);
    const std::lock_guard lock(m_mutex);
    subscriptions.emplace_back(notice, event);
}

void CScriptedReceiver::Unsubscribe(const CSmartPtr<devio::INotice>& notice) {
    const std::lock_guard lock(m_mutex);
    std::erase_if(subscriptions, [&](const auto& s) { return s.first == notice; });
}

void CScriptedReceiver::RaiseEvent(unsigned event) {
    std::vector<CSmartPtr<devio::INotice>> targets;
    {
        const std::lock_guard lock(m_mutex);
        for (const auto& [notice, number] : subscriptions)
            if (number == event) targets.push_back(notice);
    }
    for (const auto& n : targets) n->Signal();
}

devio::CommandId CScriptedReceiver::IssueCommand(const ustring& command, bool sendFlag,
                                                 const CSmartPtr<devio::CCommandReply>& reply,
                                                 const CSmartPtr<devio::INotice>& notice, unsigned timeoutMs, bool sendOption) {
    Step step;
    devio::CommandId id = 0;
    {
        const std::lock_guard lock(m_mutex);
        m_sent.push_back(command);
        m_flags.emplace_back(sendFlag, sendOption);
        m_timeouts.push_back(timeoutMs);
        const auto it = m_script.find(command);
        step = it == m_script.end() ? m_default : it->second;
        id = m_next++;
        m_pending[id] = {reply, notice};
    }
    m_issued.notify_all();
    if (!sendFlag) step = Reply(L"");
    if (step.kind == Kind::Held) {
        const std::lock_guard lock(m_mutex);
        m_held.push_back(id);
        return id;
    }
    // A silent receiver leaves the channel to give up on its own, well after the time-out it was
    // given: the caller's own wait for that time-out ends first and cancels the command.
    if (step.kind == Kind::Silence) FinishLater(id, TimedOut(), 2 * timeoutMs + 100);
    else if (step.delayMs == 0) Finish(id, step);
    else FinishLater(id, step, static_cast<unsigned>(step.delayMs));
    return id;
}

void CScriptedReceiver::FinishLater(devio::CommandId id, const Step& step, unsigned delayMs) {
    const std::lock_guard lock(m_mutex);
    m_threads.emplace_back([this, id, step, delayMs] {
        {
            std::unique_lock lock(m_mutex);
            if (m_wake.wait_for(lock, std::chrono::milliseconds(delayMs), [this] { return m_closing; })) return;
        }
        Finish(id, step);
    });
}

void CScriptedReceiver::Finish(devio::CommandId id, const Step& step) {
    std::pair<CSmartPtr<devio::CCommandReply>, CSmartPtr<devio::INotice>> target;
    {
        const std::lock_guard lock(m_mutex);
        const auto it = m_pending.find(id);
        if (it == m_pending.end()) return;
        target = it->second;
        m_pending.erase(it);
    }
    devio::CCommandReply::Result result;
    result.text = step.text;
    result.status = step.kind == Kind::Error ? -2 : 0;
    if (step.kind == Kind::LinkLost) result.linkError = basekit::kErrorLinkLost;
    if (step.kind == Kind::TimedOut) result.linkError = basekit::kErrorTimeout;
    target.first->Complete(std::move(result));
    target.second->Signal();
}

void CScriptedReceiver::Cancel(devio::CommandId id) {
    const std::lock_guard lock(m_mutex);
    ++m_cancels;
    m_pending.erase(id);
}

}  // namespace fenktest
