#include "platform/uikit/WideScreen.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <optional>

#include "platform/basekit/StoreGuard.h"

namespace uikit {

namespace {

std::optional<bool> ForcedByEnvironment() {
    const QByteArray value = qgetenv("FENK_WIDE_SCREEN").trimmed();
    if (value == "1") return true;
    if (value == "0") return false;
    return std::nullopt;
}

std::optional<bool> ForcedBySettings() {
    basekit::GuardDefaultStore();
    const QVariant value = QSettings().value(QStringLiteral("uikit/WideScreen"));
    if (!value.isValid()) return std::nullopt;
    return value.toBool();
}

bool MeasuredOnPrimaryScreen() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) return false;
    const QSize size = screen->size();
    return size.height() > 0 && 2 * size.width() >= 3 * size.height();
}

}  // namespace

bool IsWideScreen() {
    if (const auto forced = ForcedByEnvironment()) return *forced;
    if (const auto forced = ForcedBySettings()) return *forced;
    return MeasuredOnPrimaryScreen();
}

}  // namespace uikit
