#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimer>
#include <memory>
#include <thread>
#include <vector>

#include "platform/basekit/CWindowMessage.h"

using namespace basekit;

namespace {

class Receiver : public QObject {
public:
    std::vector<std::tuple<unsigned, std::uintptr_t, std::intptr_t>> got;
    bool event(QEvent* e) override {
        if (e->type() != CWindowMessageEvent::EventType()) return QObject::event(e);
        const auto* m = static_cast<CWindowMessageEvent*>(e);
        got.emplace_back(m->Message(), m->WParam(), m->LParam());
        if (got.size() == 2) QCoreApplication::quit();
        return true;
    }
};

TEST(WindowMessage, PostedFromAThreadArriveInOrderOnTheOwnersThread) {
    int argc = 0;
    QCoreApplication app(argc, nullptr);
    Receiver window;
    const HWND target = std::make_shared<CWindowTarget>(&window);
    std::thread poster([&] {
        PostWindowMessage(target, WM_USER + 2, 1, 0);
        PostWindowMessage(target, WM_USER + 3, 0, 7);
    });
    poster.join();
    QTimer::singleShot(10000, &app, &QCoreApplication::quit);
    app.exec();
    ASSERT_EQ(window.got.size(), 2u);
    EXPECT_EQ(window.got[0], std::make_tuple(1026u, std::uintptr_t{1}, std::intptr_t{0}));
    EXPECT_EQ(window.got[1], std::make_tuple(1027u, std::uintptr_t{0}, std::intptr_t{7}));
    target->Detach();
    EXPECT_FALSE(PostWindowMessage(target, 1026)) << "a detached window takes no messages";
    EXPECT_FALSE(PostWindowMessage(nullptr, 1026));
}

}  // namespace
