#pragma once
#include <QColor>
#include <QImage>
#include <cstdint>
#include <map>
#include <vector>

class QPainter;

// How a satellite looks wherever the status pages show one: its system's colour, its name, the
// text of its navigation status and its symbol (used in the position or not).
namespace satlook {

// The system's colour scaled by f (clamped to 0..1; f = 1 gives the table colour itself).
// GPS 1, GLO 2, SBAS 3, QZSS 4 (254, not 255), Reserved 5 and the rest grey keep the colours the
// receiver tools have always used; Galileo 6 is azure (64, 160, 255) and BeiDou 7 amber
// (255, 176, 0), chosen to stay apart from the older four on a white chart.
QColor SatelliteColour(std::int32_t system, double f);

// String number of the system's name, 0 when the code has none.
unsigned SystemNameId(std::int32_t system);

// String number of the navigation status text, 0 for a code without one.
unsigned NavStatusTextId(std::uint8_t status);

// The symbols recoloured from the green template of bitmap 3114, built once on first use.
class CSatelliteSymbols {
public:
    static const CSatelliteSymbols& Instance();

    static int Key(std::int32_t system, bool used) { return system + 256 * (used ? 1 : 0); }
    // -1 for a key that was never added: nothing is drawn for it.
    int Index(int key) const;
    const QImage& Image(int index) const { return m_images[static_cast<size_t>(index)]; }
    QSize SymbolSize() const { return m_size; }
    // Draws the symbol of key with its top-left corner at (x, y); false when there is none.
    bool Draw(QPainter& painter, int key, int x, int y) const;

private:
    CSatelliteSymbols();
    std::vector<QImage> m_images;   // the image list
    std::map<int, int> m_index;     // key -> image
    QSize m_size;
};

}  // namespace satlook
