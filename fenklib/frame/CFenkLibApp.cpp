#include "fenklib/frame/CFenkLibApp.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QStandardPaths>

#include "fenklib/frame/CFenkGlobalSettings.h"
#include "fenklib/frame/CFenkLibDoc.h"
#include "fenklib/frame/LauncherConvention.h"
#include "platform/uikit/CMessageBoxService.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/FenkResources.h"
#include "fenklib/resources/StringIds.h"

using basekit::ustring;

CFenkLibApp& CFenkLibApp::Instance() {
    static CFenkLibApp app;
    return app;
}

CFenkLibApp::CFenkLibApp() : m_appName(CFenkLibDoc::GetShortApplicationName(true)) {}

const basekit::CResourceInstance& CFenkLibApp::Resources() const { return FenkResources(); }

const QFont& CFenkLibApp::BoldFont() {
    if (!m_boldFont && qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        m_boldFont = std::make_unique<QFont>(QGuiApplication::font());
        m_boldFont->setWeight(QFont::Bold);
    }
    static const QFont empty;
    return m_boldFont ? *m_boldFont : empty;
}

ustring CFenkLibDoc::GetApplicationVersion(bool translated) {
    ustring s;
    translated ? s.xload(FenkResources(), IDS_APP_VERSION) : s.load(FenkResources(), IDS_APP_VERSION);
    return s;
}

ustring CFenkLibDoc::GetLongApplicationName(bool translated) {
    ustring s;
    translated ? s.xload(FenkResources(), IDS_APP_NAME) : s.load(FenkResources(), IDS_APP_NAME);
    return s;
}

// The long and the short name are one entry of the table on purpose.
ustring CFenkLibDoc::GetShortApplicationName(bool translated) { return GetLongApplicationName(translated); }

ustring LoadResString(unsigned id) {
    ustring s;
    s.load(FenkResources(), id);
    return s;
}

const QFont& GetBoldFont() { return CFenkLibApp::Instance().BoldFont(); }

ustring GetDataFilePath(const ustring& name, const ustring& extension) {
    const QString file = ustring(name + extension).ToQString();
    const QString beside = QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("DATA/") + file);
    if (QFileInfo::exists(beside)) return ustring::FromQString(beside);
    const QString installed = QStandardPaths::locate(QStandardPaths::GenericDataLocation, QStringLiteral("fenklib/DATA/") + file);
    return ustring::FromQString(installed.isEmpty() ? beside : installed);
}

ustring FormatXyzText(const devio::vok::POS_XYZ& pos) {
    return ustring::Format(L"%.4f,%.4f,%.4f", pos.x, pos.y, pos.z);
}

namespace {

ustring AngleText(double a, unsigned positive, unsigned negative) {
    const bool isNegative = a < 0;
    const double v = isNegative ? -a : a;
    const int d = static_cast<int>(v);
    const int m = static_cast<int>((v - d) * 60);
    const float s = static_cast<float>(((v - d) - m / 60.0) * 3600);
    return ustring::Format(L"%02d\u00b0%02d'%.4f''%s; ", d, m, static_cast<double>(s),
                           LoadResString(isNegative ? negative : positive));
}

}  // namespace

ustring FormatGeoText(const devio::vok::POS_GEO& pos) {
    return AngleText(pos.lat, IDS_NORTH, IDS_SOUTH) + AngleText(pos.lon, IDS_EAST, IDS_WEST) +
           ustring::Format(L"%.2f%s", pos.height, LoadResString(IDS_METRES));
}

void TellStoreProblemOnce() {
    const ustring problem = CFenkGlobalSettings::Ref().TakeStoreProblem();
    if (!problem.empty()) uikit::CMessageBoxService::Show(nullptr, problem, {}, uikit::MB_OK | uikit::MB_ICONWARNING);
}
