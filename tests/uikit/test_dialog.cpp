#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QLabel>
#include <QPointer>
#include <QSettings>
#include <QThread>
#include <QTimer>
#include <atomic>
#include <functional>
#include <thread>
#include <vector>

#include "platform/uikit/CResizableDialog.h"
#include "platform/uikit/MessageBoxTypes.h"

using namespace uikit;

namespace {

struct Received {
    unsigned message;
    std::uintptr_t wParam;
    std::intptr_t lParam;
    bool onGuiThread;
};

class ProbeDialog : public CResizableDialog {
public:
    explicit ProbeDialog(const wchar_t* name = L"ProbeDialog") : CResizableDialog(nullptr, name) {
        child = new QLabel(this);
        QTimer::singleShot(10000, this, [this] { EndDialog(99); });   // never hang the suite
    }
    ~ProbeDialog() override { DestroyWindow(); }

    std::function<void(ProbeDialog&)> onInit;
    std::function<void(ProbeDialog&)> onDestroy;
    std::vector<Received> received;
    std::size_t endAfterMessages = 0;
    int shown = 0, destroyed = 0;
    bool childAliveInDestroy = false;
    QPointer<QLabel> child;

    bool OnInitDialog() override {
        if (onInit) onInit(*this);
        return CResizableDialog::OnInitDialog();
    }

protected:
    std::intptr_t OnWindowMessage(unsigned message, std::uintptr_t w, std::intptr_t l) override {
        received.push_back({message, w, l, QThread::currentThread() == thread()});
        if (received.size() == endAfterMessages) EndDialog(IDOK);
        return 0;
    }
    void OnDestroy() override {
        ++destroyed;
        childAliveInDestroy = !child.isNull();
        if (onDestroy) onDestroy(*this);
    }
    void showEvent(QShowEvent* e) override { ++shown; CResizableDialog::showEvent(e); }
};

int RunWith(ProbeDialog& dialog, std::function<void()> script) {
    QTimer::singleShot(0, &dialog, std::move(script));
    return dialog.DoModal();
}

struct EndCase {
    std::function<void(ProbeDialog&)> end;
    bool duringInit;
    int result;
    const char* legend;
};

TEST(ResizableDialog, EveryWayOfEndingGivesItsResultAndOneOnDestroy) {
    const EndCase cases[] = {
        {[](ProbeDialog& d) { d.EndDialog(5); }, false, 5, "EndDialog passes its value"},
        {[](ProbeDialog& d) { d.accept(); }, false, IDOK, "OK is 1"},
        {[](ProbeDialog& d) { d.reject(); }, false, IDCANCEL, "Cancel/Escape is 2, not Qt's 0"},
        {[](ProbeDialog& d) { d.close(); }, false, IDCANCEL, "the window frame's close is Cancel"},
        {[](ProbeDialog& d) { d.EndDialog(3); }, true, 3, "ended during initialisation: never shown"},
    };
    for (const auto& c : cases) {
        int destroyed = 0;
        {
            ProbeDialog dialog;
            dialog.onDestroy = [&](ProbeDialog&) { ++destroyed; };
            if (c.duringInit) dialog.onInit = c.end;
            EXPECT_EQ(c.duringInit ? dialog.DoModal() : RunWith(dialog, [&] { c.end(dialog); }), c.result) << c.legend;
            EXPECT_EQ(dialog.shown, c.duringInit ? 0 : 1) << c.legend;
            EXPECT_TRUE(dialog.childAliveInDestroy) << c.legend << ": controls outlive OnDestroy";
            EXPECT_FALSE(dialog.GetSafeHwnd()->IsAttached()) << c.legend;
        }
        EXPECT_EQ(destroyed, 1) << c.legend << ": the destructor does not run OnDestroy a second time";
    }
    ProbeDialog neverRun;
    neverRun.DestroyWindow();
    EXPECT_EQ(neverRun.destroyed, 0) << "a window never created is not destroyed";
}

TEST(ResizableDialog, MessagesPostedFromAnotherThreadArriveOnTheGuiThread) {
    ProbeDialog dialog;
    dialog.endAfterMessages = 2;
    std::thread poster;
    dialog.onInit = [&](ProbeDialog& d) {
        poster = std::thread([hwnd = d.GetSafeHwnd()] {
            for (unsigned i = 0; i < 2; ++i) basekit::PostWindowMessage(hwnd, basekit::WM_USER + 2, i, -static_cast<int>(i));
        });
    };
    EXPECT_EQ(dialog.DoModal(), IDOK);
    poster.join();
    ASSERT_EQ(dialog.received.size(), 2u);
    for (unsigned i = 0; i < 2; ++i) {
        EXPECT_EQ(dialog.received[i].message, 1026u);
        EXPECT_EQ(dialog.received[i].wParam, i);
        EXPECT_EQ(dialog.received[i].lParam, -static_cast<std::intptr_t>(i));
        EXPECT_TRUE(dialog.received[i].onGuiThread);
    }
}

TEST(ResizableDialog, MessagesAfterTheWindowEndedAreDropped) {
    basekit::HWND hwnd;
    {
        ProbeDialog dialog;
        dialog.onInit = [](ProbeDialog& d) {
            basekit::PostWindowMessage(d.GetSafeHwnd(), 1027);   // queued, then the window ends
            d.EndDialog(IDCANCEL);
        };
        dialog.DoModal();
        hwnd = dialog.GetSafeHwnd();
        EXPECT_FALSE(basekit::PostWindowMessage(hwnd, 1028)) << "the ended window refuses posts";
        QCoreApplication::sendPostedEvents(&dialog, basekit::CWindowMessageEvent::EventType());
        EXPECT_TRUE(dialog.received.empty()) << "the message queued before the end is dropped";
    }
    bool posted = true;
    std::thread([&] { posted = basekit::PostWindowMessage(hwnd, 1027); }).join();
    EXPECT_FALSE(posted) << "a post to a deleted window is dropped, not delivered";
    EXPECT_FALSE(basekit::PostWindowMessage(nullptr, 1027)) << "nor one to no window";
}

TEST(ResizableDialog, PlacementIsKeptByName) {
    const QSize chosen(345, 234);
    {
        ProbeDialog first(L"PlacementProbe");
        RunWith(first, [&] {
            first.resize(chosen);
            first.EndDialog(IDOK);
        });
    }
    EXPECT_TRUE(QSettings().contains(QStringLiteral("WindowPlacement/PlacementProbe")));
    QSize reopened, other;
    ProbeDialog second(L"PlacementProbe");
    RunWith(second, [&] { reopened = second.size(); second.EndDialog(IDOK); });
    ProbeDialog stranger(L"AnotherName");
    RunWith(stranger, [&] { other = stranger.size(); stranger.EndDialog(IDOK); });
    EXPECT_EQ(reopened, chosen);
    EXPECT_NE(other, chosen) << "placement belongs to the name, not to the class";
}

}  // namespace
