// Listeners between the reader thread and a window: what is queued, what is kept, and how often
// the window is told.
#include <gtest/gtest.h>

#include "platform/devio/CListenerHost.h"

using namespace devio;

namespace {

struct Counter {
    COverlapped record;
    CSmartPtr<INotice> notice = INotice::CreateInstance(record);
    bool Signalled() {
        const bool set = record.Event().IsSet();
        record.Event().Reset();
        return set;
    }
};

TEST(Listeners, ABurstArrivesWholeInOrderWithOneNotice) {
    const CSmartPtr<CListenerHost> host(new CListenerHost());
    const auto positions = IPositionListener::CreateInstance(1);
    Counter counter;
    positions->AttachNotice(counter.notice, 1);
    host->AddListener(CSmartPtr<IListener>(positions.Get()));
    for (int i = 0; i < 10; ++i) {
        POSITION_RECORD r;
        r.x = i;
        host->Offer(r);
    }
    EXPECT_TRUE(counter.Signalled());
    POSITION_RECORD r;
    for (int i = 0; i < 10; ++i) {
        ASSERT_TRUE(positions->Fetch(r, 0));
        EXPECT_EQ(r.x, i);
    }
    EXPECT_FALSE(positions->Fetch(r, 0));
    EXPECT_FALSE(counter.Signalled()) << "one notice for the whole burst";
    host->Offer(r);
    EXPECT_TRUE(counter.Signalled()) << "the next record after a drain is told again";
}

TEST(Listeners, EachKindTakesItsOwnRecordsAndTheSatelliteListOnlyTheLatest) {
    const CSmartPtr<CListenerHost> host(new CListenerHost());
    const auto sats = ISatListListener::CreateInstance(1);
    const auto links = IDataLinkListener::CreateInstance(1);
    const auto times = IDateTimeListener::CreateInstance(1);
    for (const CSmartPtr<IListener>& l : {CSmartPtr<IListener>(sats.Get()), CSmartPtr<IListener>(links.Get()),
                                         CSmartPtr<IListener>(times.Get())})
        host->AddListener(l);
    host->AddListener(CSmartPtr<IListener>(sats.Get()));
    EXPECT_EQ(host->Count(), 3u) << "a listener is added once";
    Counter satNotices;
    sats->AttachNotice(satNotices.notice, 1);
    for (int n = 1; n <= 3; ++n) host->Offer(SATLIST_RECORD(static_cast<size_t>(n)));
    EXPECT_TRUE(satNotices.Signalled()) << "one notice for the burst";
    DATALINK_RECORD dl;
    dl.port = 'A';
    host->Offer(dl);
    DATETIME_RECORD dt;
    dt.year = 2026;
    host->Offer(dt);
    SATLIST_RECORD list;
    ASSERT_TRUE(sats->Fetch(list));
    EXPECT_EQ(list.size(), 3u) << "only the latest list of the burst, not the oldest";
    EXPECT_FALSE(sats->Fetch(list));
    ASSERT_TRUE(links->Fetch(dl, 0));
    EXPECT_EQ(dl.port, 'A');
    EXPECT_FALSE(links->Fetch(dl, 0));
    ASSERT_TRUE(times->Fetch(dt, 0));
    EXPECT_EQ(dt.year, 2026);
    host->RemoveListener(CSmartPtr<IListener>(links.Get()));
    host->Offer(dl);
    EXPECT_FALSE(links->Fetch(dl, 0)) << "a removed listener is fed no more";
}

}  // namespace
