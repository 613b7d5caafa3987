#include "fenklib/site/CAutoSeed_PointListDlg.h"

#include <QHeaderView>
#include <algorithm>
#include <optional>
#include <QLocale>
#include <QPushButton>
#include <QTreeWidget>

#include "fenklib/frame/CFenkGlobalSettings.h"
#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/receiver/ParamCatalogue.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/site/CAutoSeed_NewPointDlg.h"
#include "fenklib/site/PositionEditing.h"
#include "platform/basekit/CCommException.h"

using basekit::ustring;

namespace {

enum : unsigned { IDC_POINTS = 3331, IDC_ADD, IDC_DELETE, IDC_PROTECT };

constexpr DLG_ITEM kItems[] = {
    {IDC_POINTS, CtlKind::ListView, 0, 2, 2, 236, 128, uikit::kAnchorFill},
    {IDC_ADD, CtlKind::Button, IDS_ADD_POINT, 2, 136, 44, 14, uikit::kAnchorBottomLeft},
    {IDC_DELETE, CtlKind::Button, IDS_DELETE_POINT, 50, 136, 44, 14, uikit::kAnchorBottomLeft},
    {IDC_PROTECT, CtlKind::Button, IDS_PROTECT_POINT, 98, 136, 44, 14, uikit::kAnchorBottomLeft},
    {IDOK_BUTTON, CtlKind::Button, IDS_CLOSE, 188, 136, 50, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kLayout{IDD_AUTO_SEED_POINT_LIST, 240, 154, kItems};
const CLayoutRegistration kRegistered("CAutoSeed_PointListDlg", {{&kLayout}});

// The columns, in order, with the text each shows of a point.
struct COLUMN {
    unsigned headingId;
    QString (*text)(const CAutoSeed_PointListDlg::POINT&, CoordEditor);
};
QString Mark(bool on) { return LoadResString(on ? IDS_YES_MARK : IDS_NO_MARK).ToQString(); }
constexpr COLUMN kColumns[] = {
    {IDS_POINT_COL_ID, [](const auto& p, CoordEditor) { return QString::number(p.id); }},
    {IDS_POINT_COL_NAME, [](const auto& p, CoordEditor) { return p.name.ToQString(); }},
    {IDS_POINT_COL_DATE, [](const auto& p, CoordEditor) { return QLocale().toString(p.date.toLocalTime(), QLocale::ShortFormat); }},
    {IDS_POINT_COL_DISTANCE, [](const auto& p, CoordEditor) { return QLocale().toString(p.distance, 'f', 3); }},
    {IDS_POINT_COL_PROTECTED, [](const auto& p, CoordEditor) { return Mark(p.isProtected); }},
    {IDS_POINT_COL_AUTO, [](const auto& p, CoordEditor) { return Mark(p.automatic); }},
    {IDS_POINT_COL_COORDINATES, [](const auto& p, CoordEditor e) { return positionediting::Show(e, p.position).ToQString(); }},
};

// The receiver refuses to print a place that holds no point; a lost link is still a failure.
std::optional<int> StoredId(devio::CVokReceiverMate& mate, int slot) {
    try {
        return mate.Get(devio::par::RefAvgPointId, slot);
    } catch (const basekit::CCommException&) {
        return std::nullopt;
    }
}

}  // namespace

CAutoSeed_PointListDlg::CAutoSeed_PointListDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent)
    : CFenkDialog(std::move(receiver), IDD_AUTO_SEED_POINT_LIST, parent, L"CAutoSeed_PointListDlg"),
      m_controls(CLayoutFactory::Build(this, kLayout)),
      m_editor(EditorUnlessGeodetic(CFenkGlobalSettings::Ref().GetCoordSystem())) {
    setWindowTitle(LoadResString(IDS_STORED_POINTS).ToQString());
    auto* list = m_controls.Get<QTreeWidget>(IDC_POINTS);
    QStringList headings;
    for (const COLUMN& c : kColumns) headings << LoadResString(c.headingId).ToQString();
    list->setHeaderLabels(headings);
    connect(list, &QTreeWidget::currentItemChanged, this, [this] { UpdateControls(); });
    connect(m_controls.Get<QPushButton>(IDC_ADD), &QPushButton::clicked, this, [this] { AddPoint(); });
    connect(m_controls.Get<QPushButton>(IDC_DELETE), &QPushButton::clicked, this, [this] { DeletePoint(); });
    m_controls.Get<QPushButton>(IDC_PROTECT)->setCheckable(true);   // pressed while the point is protected
    connect(m_controls.Get<QPushButton>(IDC_PROTECT), &QPushButton::clicked, this, [this] { ToggleProtection(); });
}

CAutoSeed_PointListDlg::~CAutoSeed_PointListDlg() { DestroyWindow(); }

bool CAutoSeed_PointListDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    Reload();
    return true;
}

void CAutoSeed_PointListDlg::Reload() {
    RunJob([editor = m_editor](CJobContext& job) { return Read(job, editor); },
           [this](const JOB_RESULT<std::vector<POINT>>& r) {
               if (!r.Ok()) return;
               // The point the user was working on stays selected across the re-read.
               const POINT* before = Selected();
               const int slot = before ? before->slot : -1;
               m_points = *r.value;
               ShowPoints();
               const auto again = std::find_if(m_points.begin(), m_points.end(), [slot](const POINT& p) { return p.slot == slot; });
               if (again != m_points.end()) Select(static_cast<int>(again - m_points.begin()));
           });
}

std::vector<CAutoSeed_PointListDlg::POINT> CAutoSeed_PointListDlg::Read(CJobContext& job, CoordEditor editor) {
    std::vector<POINT> points;
    devio::CVokReceiverMate& mate = job.Mate();
    for (int slot = 0; slot < kSlots && !job.IsStopping(); ++slot) {
        const std::optional<int> id = StoredId(mate, slot);
        if (!id) continue;
        POINT p;
        p.slot = slot;
        p.id = *id;
        p.name = mate.Get(devio::par::RefAvgPointName, slot);
        p.date = mate.Get(devio::par::RefAvgPointDate, slot);
        p.distance = mate.Get(devio::par::RefAvgPointDist, slot);
        p.isProtected = mate.Get(devio::par::RefAvgPointProtect, slot);
        p.automatic = mate.Get(devio::par::RefAvgPointAuto, slot);
        p.position = editor == CoordEditor::Geo ? mate.GetStoredPointGeo(slot, L"arp")
                                                : wgs84::ToGeo(mate.GetStoredPointXyz(slot, L"arp"));
        points.push_back(std::move(p));
        job.Progress(slot + 1, kSlots);
    }
    return points;
}

void CAutoSeed_PointListDlg::ShowPoints() {
    auto* list = m_controls.Get<QTreeWidget>(IDC_POINTS);
    list->clear();
    for (const POINT& p : m_points) {
        QStringList texts;
        for (const COLUMN& c : kColumns) texts << c.text(p, m_editor);
        list->addTopLevelItem(new QTreeWidgetItem(list, texts));
    }
    for (int c = 0; c < list->columnCount(); ++c) list->resizeColumnToContents(c);
}

void CAutoSeed_PointListDlg::Select(int row) {
    auto* list = m_controls.Get<QTreeWidget>(IDC_POINTS);
    list->setCurrentItem(list->topLevelItem(row));
}

const CAutoSeed_PointListDlg::POINT* CAutoSeed_PointListDlg::Selected() const {
    const int row = m_controls.Get<QTreeWidget>(IDC_POINTS)->currentIndex().row();
    if (row < 0 || row >= static_cast<int>(m_points.size())) return nullptr;
    return &m_points[static_cast<size_t>(row)];
}

int CAutoSeed_PointListDlg::FirstFreeSlot(const std::vector<POINT>& points) {
    for (int slot = 0; slot < kSlots; ++slot)
        if (std::none_of(points.begin(), points.end(), [slot](const POINT& p) { return p.slot == slot; })) return slot;
    return -1;
}

void CAutoSeed_PointListDlg::UpdateControls() {
    const bool idle = !IsBusy();
    const POINT* point = idle ? Selected() : nullptr;
    m_controls.Item(IDC_ADD)->setEnabled(idle);
    m_controls.Item(IDC_DELETE)->setEnabled(point && !point->isProtected);
    m_controls.Item(IDC_PROTECT)->setEnabled(point != nullptr);
    m_controls.Get<QPushButton>(IDC_PROTECT)->setChecked(point && point->isProtected);
}

void CAutoSeed_PointListDlg::AddPoint() {
    const int slot = FirstFreeSlot(m_points);
    if (slot < 0) {
        uikit::CMessageBoxService::Show(this, LoadResString(IDS_NO_FREE_SLOT), {}, uikit::MB_OK | uikit::MB_ICONEXCLAMATION);
        return;
    }
    CAutoSeed_NewPointDlg dlg(GetReceiver(), this, slot);
    if (dlg.DoModal() == 1) Reload();
}

void CAutoSeed_PointListDlg::DeletePoint() {
    const POINT* point = Selected();
    if (!point) return;
    const ustring question = ustring::Format(LoadResString(IDS_CONFIRM_DELETE_POINT).c_str(), point->name.c_str());
    if (uikit::CMessageBoxService::Show(this, question, {}, uikit::MB_YESNO | uikit::MB_ICONQUESTION) != uikit::IDYES) return;
    const int slot = point->slot;
    ChangeThenReload([slot](CJobContext& job) { job.Mate().Do(devio::par::RefAvgPointDelete, slot); });
}

// The list is read again also after a refusal: it shows what the receiver holds.
void CAutoSeed_PointListDlg::ChangeThenReload(std::function<void(CJobContext&)> change) {
    RunJob(std::move(change), [this](const JOB_RESULT<void>& r) {
        if (r.outcome != JobOutcome::Stopped) Reload();
    });
}

void CAutoSeed_PointListDlg::ToggleProtection() {
    const POINT* point = Selected();
    if (!point) return;
    const int slot = point->slot;
    const bool protect = !point->isProtected;
    ChangeThenReload([slot, protect](CJobContext& job) { job.Mate().Set(devio::par::RefAvgPointOptionProtect, protect, slot); });
}
