#include "fenklib/status/SatelliteLook.h"

#include <QPainter>
#include <algorithm>
#include <array>

#include "fenklib/resources/FenkImages.h"
#include "fenklib/resources/ImageIds.h"
#include "fenklib/resources/MagentaKey.h"
#include "fenklib/resources/StringIds.h"
#include "platform/devio/SatelliteRecord.h"

namespace satlook {

namespace {

struct SYSTEM_LOOK {
    std::int32_t system;
    QRgb colour;
    unsigned nameId;
};
constexpr std::array kSystems{
    SYSTEM_LOOK{0, qRgb(128, 128, 128), IDS_SYSTEM_UNUSED}, SYSTEM_LOOK{1, qRgb(128, 255, 128), IDS_SYSTEM_GPS},
    SYSTEM_LOOK{2, qRgb(255, 128, 128), IDS_SYSTEM_GLO},    SYSTEM_LOOK{3, qRgb(128, 128, 255), IDS_SYSTEM_SBAS},
    SYSTEM_LOOK{4, qRgb(254, 0, 254), IDS_SYSTEM_QZSS},     SYSTEM_LOOK{5, qRgb(255, 255, 255), IDS_SYSTEM_RESERVED},
    SYSTEM_LOOK{6, qRgb(64, 160, 255), IDS_SYSTEM_GALILEO}, SYSTEM_LOOK{7, qRgb(255, 176, 0), IDS_SYSTEM_BEIDOU},
};
constexpr QRgb kOtherColour = qRgb(128, 128, 128);

const SYSTEM_LOOK* FindSystem(std::int32_t system) {
    const auto it = std::find_if(kSystems.begin(), kSystems.end(), [&](const SYSTEM_LOOK& s) { return s.system == system; });
    return it == kSystems.end() ? nullptr : &*it;
}

// Searched in this order; the numbers are not in code order (20 -> 3197 but 32 -> 3198).
constexpr std::pair<std::uint8_t, unsigned> kNavStatusTexts[] = {
    {0, IDS_NAV_STATUS_00},  {1, IDS_NAV_STATUS_01},  {2, IDS_NAV_STATUS_02},  {3, IDS_NAV_STATUS_03},
    {4, IDS_NAV_STATUS_04},  {5, IDS_NAV_STATUS_05},  {6, IDS_NAV_STATUS_06},  {7, IDS_NAV_STATUS_07},
    {8, IDS_NAV_STATUS_08},  {9, IDS_NAV_STATUS_09},  {10, IDS_NAV_STATUS_10}, {11, IDS_NAV_STATUS_11},
    {12, IDS_NAV_STATUS_12}, {13, IDS_NAV_STATUS_13}, {14, IDS_NAV_STATUS_14}, {15, IDS_NAV_STATUS_15},
    {16, IDS_NAV_STATUS_16}, {17, IDS_NAV_STATUS_17}, {18, IDS_NAV_STATUS_18}, {19, IDS_NAV_STATUS_19},
    {20, IDS_NAV_STATUS_20}, {22, IDS_NAV_STATUS_22}, {23, IDS_NAV_STATUS_23}, {24, IDS_NAV_STATUS_24},
    {26, IDS_NAV_STATUS_26}, {27, IDS_NAV_STATUS_27}, {28, IDS_NAV_STATUS_28}, {29, IDS_NAV_STATUS_29},
    {30, IDS_NAV_STATUS_30}, {31, IDS_NAV_STATUS_31}, {32, IDS_NAV_STATUS_32}, {51, IDS_NAV_STATUS_51},
    {52, IDS_NAV_STATUS_52}, {53, IDS_NAV_STATUS_53}, {54, IDS_NAV_STATUS_54}, {55, IDS_NAV_STATUS_55},
    {56, IDS_NAV_STATUS_56}, {63, IDS_NAV_STATUS_63},
};

// Template pixels (red and blue 0, green not) take the system colour shaded by their green.
QImage Recolour(const QImage& half, std::int32_t system) {
    QImage out = half.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < out.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(out.scanLine(y));
        for (int x = 0; x < out.width(); ++x) {
            const QRgb p = line[x];
            if ((p & 0xFFFFFFu) == kFenkBitmapTransparent) line[x] = 0;
            else if (qRed(p) == 0 && qBlue(p) == 0 && qGreen(p) != 0)
                line[x] = SatelliteColour(system, qGreen(p) / 255.0).rgb();
        }
    }
    return out;
}

}  // namespace

QColor SatelliteColour(std::int32_t system, double f) {
    const SYSTEM_LOOK* look = FindSystem(system);
    const QColor full(look ? look->colour : kOtherColour);
    f = std::clamp(f, 0.0, 1.0);
    if (f == 1.0) return full;
    return QColor(static_cast<int>(full.red() * f), static_cast<int>(full.green() * f), static_cast<int>(full.blue() * f));
}

unsigned SystemNameId(std::int32_t system) {
    const SYSTEM_LOOK* look = FindSystem(system);
    return look ? look->nameId : 0;
}

unsigned NavStatusTextId(std::uint8_t status) {
    for (const auto& [code, id] : kNavStatusTexts)
        if (code == status) return id;
    return 0;
}

const CSatelliteSymbols& CSatelliteSymbols::Instance() {
    static const CSatelliteSymbols symbols;
    return symbols;
}

CSatelliteSymbols::CSatelliteSymbols() {
    const QImage bitmap = FenkBitmap(IDB_SATELLITE_SYMBOLS);
    if (bitmap.isNull() || bitmap.width() < 2) return;
    const int half = bitmap.width() / 2;
    m_size = QSize(half, bitmap.height());
    for (const SYSTEM_LOOK& look : kSystems) {
        for (const bool used : {true, false}) {
            m_index[Key(look.system, used)] = static_cast<int>(m_images.size());
            m_images.push_back(Recolour(bitmap.copy(used ? 0 : half, 0, half, bitmap.height()), look.system));
        }
    }
}

int CSatelliteSymbols::Index(int key) const {
    const auto it = m_index.find(key);
    return it == m_index.end() ? -1 : it->second;
}

bool CSatelliteSymbols::Draw(QPainter& painter, int key, int x, int y) const {
    const int index = Index(key);
    if (index < 0) return false;
    painter.drawImage(x, y, Image(index));
    return true;
}

}  // namespace satlook
