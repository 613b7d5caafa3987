#pragma once
#include <cstdint>

#include "platform/devio/ICommandChannel.h"
#include "platform/devio/IListener.h"
#include "platform/devio/IPort.h"
#include "platform/devio/IRawTap.h"
#include "platform/devio/LinkHealth.h"

namespace devio {

// Receiver events: 7 the receiver's state changed (restart, lost link, the link went silent or
// came back: see GetLinkHealth), 8 events are waiting to
// be delivered with DeliverEvents on the window's thread.
enum EReceiverEvent : unsigned { kEventStateChanged = 7, kEventPending = 8 };

struct IReceiver : basekit::IRefCounted {
    virtual CSmartPtr<IPort> GetPort() const = 0;
    virtual CSmartPtr<ICommandChannel> GetCommandChannel() const = 0;
    // Throws basekit::CWinException when the receiver refuses the subscription.
    virtual void Subscribe(const CSmartPtr<INotice>& notice, unsigned eventNumber) = 0;
    virtual void Unsubscribe(const CSmartPtr<INotice>& notice) = 0;
    // Hands queued receiver events to their subscribers on the calling thread.
    virtual void DeliverEvents(std::uintptr_t wParam, std::intptr_t lParam) = 0;
    // True while the link is up and the receiver answers.
    virtual bool IsReady() const = 0;
    virtual CSmartPtr<IListenerHost> GetListenerHost() const = 0;
    // The link's state and counters; a receiver that keeps none reports an idle healthy link.
    virtual LINK_HEALTH GetLinkHealth() const { return LINK_HEALTH{}; }
    // From now on every byte the link receives also goes to the tap; false when this receiver
    // has no link to tap. Once RemoveRawTap has returned, the tap is not called again.
    virtual bool AddRawTap(const CSmartPtr<IRawTap>& /*tap*/) { return false; }
    virtual void RemoveRawTap(const CSmartPtr<IRawTap>& /*tap*/) {}
    // False on a link that carries only NMEA sentences (a replayed capture, gpsd): there every
    // command fails at once with a basekit::CStdException that says so.
    virtual bool TakesCommands() const { return true; }

protected:
    ~IReceiver() = default;
};

}  // namespace devio
