#pragma once
#include <QLayout>
#include <QRect>
#include <memory>
#include <vector>

namespace uikit {

// How a control follows its window's growth beyond the template size: it moves by
// (moveX, moveY) and grows by (sizeX, sizeY) times the growth, each factor between 0 and 1.
struct ANCHOR {
    float moveX = 0, moveY = 0, sizeX = 0, sizeY = 0;
};
inline constexpr ANCHOR kAnchorTopLeft{0, 0, 0, 0};
inline constexpr ANCHOR kAnchorFill{0, 0, 1, 1};
inline constexpr ANCHOR kAnchorTopWide{0, 0, 1, 0};       // stays on top, grows across
inline constexpr ANCHOR kAnchorTopRight{1, 0, 0, 0};
inline constexpr ANCHOR kAnchorBottomLeft{0, 1, 0, 0};
inline constexpr ANCHOR kAnchorBottomRight{1, 1, 0, 0};
inline constexpr ANCHOR kAnchorBottomWide{0, 1, 1, 0};
inline constexpr ANCHOR kAnchorBottomCentre{0.5f, 1, 0, 0};

// Places controls at their rectangles of a dialog template, in dialog units (a quarter of the
// font's average character width across, an eighth of its height down), so a layout keeps its
// proportions at any font size and scale; the template size is the window's minimum.
class CAnchorLayout : public QLayout {
public:
    CAnchorLayout(QWidget* parent, QSize templateUnits);
    ~CAnchorLayout() override;

    void Add(QWidget* control, QRect units, ANCHOR anchor);

    void addItem(QLayoutItem* item) override;
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

    // Pixels of a rectangle in dialog units, with this layout's font.
    QRect ToPixels(QRect units) const;

private:
    struct Entry {
        std::unique_ptr<QLayoutItem> item;
        QRect units;
        ANCHOR anchor;
    };
    std::vector<Entry> m_entries;
    QSize m_templateUnits;
};

}  // namespace uikit
