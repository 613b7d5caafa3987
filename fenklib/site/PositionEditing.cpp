#include "fenklib/site/PositionEditing.h"

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/site/CGeoCoordEditDlg.h"
#include "fenklib/site/CXyzCoordEditDlg.h"

namespace positionediting {

bool Edit(const basekit::CSmartPtr<devio::IReceiver>& receiver, QWidget* parent, CoordEditor editor,
          devio::vok::POS_GEO& pos) {
    if (editor == CoordEditor::Geo) {
        devio::vok::POS_GEO edited = pos;
        CGeoCoordEditDlg dlg(receiver, parent, edited);
        if (dlg.DoModal() != 1) return false;
        pos = edited;
        return true;
    }
    devio::vok::POS_XYZ xyz = wgs84::ToXyz(pos);
    CXyzCoordEditDlg dlg(receiver, parent, xyz);
    if (dlg.DoModal() != 1) return false;
    pos = wgs84::ToGeo(xyz);
    return true;
}

// One axis a line: the Cartesian text has no blank a narrow label could break at.
basekit::ustring Show(CoordEditor editor, const devio::vok::POS_GEO& pos) {
    if (editor == CoordEditor::Geo) return FormatGeoText(pos);
    basekit::ustring text;
    for (const wchar_t c : FormatXyzText(wgs84::ToXyz(pos))) text += c == L',' ? basekit::ustring(L",\n") : basekit::ustring(1, c);
    return text;
}

}  // namespace positionediting
