// Listeners between the reader thread and a window: what is queued, what is kept, and how often
// the window is told.
#include <gtest/gtest.h>

#include <atomic>

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

// A notice that counts how often it was signalled.
class CCountingNotice final : public basekit::CRefCounted<INotice> {
public:
    void Signal() override { ++count; }
    std::atomic<int> count{0};
};

TEST(Listeners, ABurstArrivesWholeInOrder) {
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
    host->Offer(r);
    EXPECT_TRUE(counter.Signalled()) << "the next record after a drain is told again";
}

// A window that takes one record per notice (the date and time, the satellite list) must get a
// notice for every record still waiting, or the records left behind are never read: two records
// of one epoch (RMC and ZDA), or a user-interface thread busy for longer than a period.
TEST(Listeners, EveryRecordIsToldEvenWhileOthersWait) {
    struct Row {
        const char* legend;
        int offered;   // records offered before the window takes any
        int taken;     // records the window takes before the next ones arrive
        int more;      // records offered after that
    };
    const Row rows[] = {
        {"two records in one epoch", 2, 0, 0},
        {"a busy window: three periods waiting", 3, 0, 0},
        {"one taken, two more arrive while one waits", 2, 1, 2},
    };
    for (const auto& row : rows) {
        const CSmartPtr<CListenerHost> host(new CListenerHost());
        const auto times = IDateTimeListener::CreateInstance(1);
        const CSmartPtr<CCountingNotice> notice(new CCountingNotice());
        times->AttachNotice(CSmartPtr<INotice>(notice.Get()), 1);
        host->AddListener(CSmartPtr<IListener>(times.Get()));
        int second = 0;
        const auto offer = [&](int n) {
            for (int i = 0; i < n; ++i) {
                DATETIME_RECORD t;
                t.year = 2026, t.second = ++second;
                host->Offer(t);
            }
        };
        offer(row.offered);
        int fetched = 0;
        DATETIME_RECORD t;
        for (int i = 0; i < row.taken; ++i) fetched += times->Fetch(t, 0) ? 1 : 0;
        offer(row.more);
        // The window takes exactly one record for each notice it has not yet answered.
        for (int pending = notice->count - row.taken; pending > 0; --pending) fetched += times->Fetch(t, 0) ? 1 : 0;
        EXPECT_EQ(fetched, row.offered + row.more) << row.legend << ": every record was read";
        EXPECT_EQ(t.second, second) << row.legend << ": the newest time is the last one shown";
        EXPECT_FALSE(times->Fetch(t, 0)) << row.legend;
    }
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
    EXPECT_TRUE(satNotices.Signalled());
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
