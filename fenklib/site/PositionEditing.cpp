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

basekit::ustring Show(CoordEditor editor, const devio::vok::POS_GEO& pos) {
    return editor == CoordEditor::Geo ? FormatGeoText(pos) : FormatXyzText(wgs84::ToXyz(pos));
}

}  // namespace positionediting
