#include "fenklib/config/CPositioningPS.h"

#include <QPushButton>
#include <QTreeWidget>

#include "fenklib/frame/WideLayout.h"

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CMessageBoxService.h"

namespace {

namespace par = devio::par;
namespace vok = devio::vok;

enum : unsigned {
    IDC_POS_MODE = 100, IDC_ALLOW_SP, IDC_ALLOW_CD, IDC_DION, IDC_RTK_DYNAMICS, IDC_AF_LEVEL, IDC_PDOP, IDC_POS_ELM, IDC_OUT_ELM,
    IDC_POS_INTERVAL, IDC_RAW_INTERVAL, IDC_ANTENNA, IDC_ANTENNA_IN_USE,
    IDC_PD_MODE = 150, IDC_PD_DYN, IDC_PD_TEXTR, IDC_PD_PERIOD, IDC_PD_VERSION, IDC_PD_RESET,
    IDC_LABEL = 200,   // labels: IDC_LABEL + row
};

constexpr short kRow = 16;
constexpr short Y(int row) { return static_cast<short>(6 + row * kRow); }

// A label and its control on one row.
#define FENK_ROW(row, id, kind, text)                                                       \
    DLG_ITEM{IDC_LABEL + (row), CtlKind::Static, text, 6, static_cast<short>(Y(row) + 2), 120, 10, uikit::kAnchorTopLeft}, \
        DLG_ITEM { id, kind, 0, 128, Y(row), 96, 13, uikit::kAnchorTopWide }

constexpr DLG_ITEM kGeneralItems[] = {
    FENK_ROW(0, IDC_POS_MODE, CtlKind::DropList, IDS_POS_MODE),
    {IDC_ALLOW_SP, CtlKind::CheckBox, IDS_ALLOW_SP, 6, Y(1), 218, 12, uikit::kAnchorTopWide},
    {IDC_ALLOW_CD, CtlKind::CheckBox, IDS_ALLOW_CD, 6, Y(2), 218, 12, uikit::kAnchorTopWide},
    FENK_ROW(3, IDC_DION, CtlKind::DropList, IDS_DION_MODE),
    FENK_ROW(4, IDC_RTK_DYNAMICS, CtlKind::DropList, IDS_RTK_DYNAMICS),
    FENK_ROW(5, IDC_AF_LEVEL, CtlKind::DropList, IDS_AF_LEVEL),
    FENK_ROW(6, IDC_PDOP, CtlKind::RealEdit, IDS_PDOP_MASK),
    FENK_ROW(7, IDC_POS_ELM, CtlKind::NumberEdit, IDS_POS_ELEVATION_MASK),
    FENK_ROW(8, IDC_POS_INTERVAL, CtlKind::NumberEdit, IDS_POS_INTERVAL),
    FENK_ROW(9, IDC_RAW_INTERVAL, CtlKind::NumberEdit, IDS_RAW_INTERVAL_MS),
    FENK_ROW(10, IDC_ANTENNA, CtlKind::DropList, IDS_ANTENNA_INPUT),
    FENK_ROW(11, IDC_ANTENNA_IN_USE, CtlKind::Static, IDS_ANTENNA_IN_USE),
    // One elevation mask per output the receiver lists; the user edits the mask column.
    {IDC_LABEL + 12, CtlKind::Static, IDS_OUT_ELEVATION_MASKS, 6, static_cast<short>(Y(12) + 2), 218, 10, uikit::kAnchorTopWide},
    {IDC_OUT_ELM, CtlKind::ListView, 0, 6, static_cast<short>(Y(13) - 2), 218, 70, uikit::kAnchorFill},
};
constexpr DLG_TEMPLATE kGeneral{IDD_POSITIONING_GENERAL, 230, Y(13) + 72, kGeneralItems};
constexpr auto kGeneralWideItems = Widened(kGeneralItems);
constexpr DLG_TEMPLATE kGeneralWide{IDD_POSITIONING_GENERAL_WIDE, 230 + kWideGrow, Y(13) + 72, kGeneralWideItems};

constexpr DLG_ITEM kSolutionItems[] = {
    FENK_ROW(0, IDC_PD_MODE, CtlKind::DropList, IDS_PD_MODE),
    FENK_ROW(1, IDC_PD_DYN, CtlKind::RealEdit, IDS_PD_DYNAMICS),
    FENK_ROW(2, IDC_PD_TEXTR, CtlKind::RealEdit, IDS_PD_EXTRAP_TIME),
    FENK_ROW(3, IDC_PD_PERIOD, CtlKind::RealEdit, IDS_PD_PERIOD),
    FENK_ROW(4, IDC_PD_VERSION, CtlKind::Static, IDS_PD_VERSION),
    {IDC_PD_RESET, CtlKind::Button, IDS_PD_RESET, 6, Y(5) + 4, 100, 14, uikit::kAnchorTopLeft},
};
constexpr DLG_TEMPLATE kSolution{IDD_POSITIONING_PD, 230, Y(7), kSolutionItems};
constexpr auto kSolutionWideItems = Widened(kSolutionItems);
constexpr DLG_TEMPLATE kSolutionWide{IDD_POSITIONING_PD_WIDE, 230 + kWideGrow, Y(7), kSolutionWideItems};
const CLayoutRegistration kRegistered("CPositioningPS", {{&kGeneral, &kGeneralWide}, {&kSolution, &kSolutionWide}});

#undef FENK_ROW

std::vector<PARAM_FIELD> GeneralFields() {
    return {
        field::Choice(IDC_POS_MODE, par::PosModeCur, {IDS_POS_MODE_SP, IDS_POS_MODE_CD, IDS_POS_MODE_PF, IDS_POS_MODE_PD}),
        field::Of(IDC_ALLOW_SP, par::PosModeSp),
        field::Of(IDC_ALLOW_CD, par::PosModeCd),
        field::Choice(IDC_DION, par::PosDionMode, {IDS_DION_OFF, IDS_DION_LOCAL, IDS_DION_SMOOTH}),
        field::Choice(IDC_RTK_DYNAMICS, par::PosRtkDynamic, {IDS_RTK_STATIC, IDS_RTK_KINEMATIC, IDS_RTK_STOPANDGO}),
        field::Choice(IDC_AF_LEVEL, par::PosPdAflevel, {IDS_AF_LOW, IDS_AF_MEDIUM, IDS_AF_HIGH}),
        field::Of(IDC_PDOP, par::PosPdop),
        field::Of(IDC_POS_ELM, par::PosElm),
        field::OutputMasks(IDC_OUT_ELM),
        field::Of(IDC_POS_INTERVAL, par::PosMsint),
        field::Of(IDC_RAW_INTERVAL, par::RawMsint),
        field::Choice(IDC_ANTENNA, par::AntennaInput, {IDS_ANT_INT, IDS_ANT_EXT, IDS_ANT_AUTO}),
        field::ShownChoice(IDC_ANTENNA_IN_USE, par::AntennaInputInUse, {IDS_ANT_INT, IDS_ANT_EXT, IDS_ANT_AUTO}),
    };
}

std::vector<PARAM_FIELD> SolutionFields() {
    return {
        field::KeywordChoice<vok::EPositionOutputMode>(IDC_PD_MODE, par::PosPdMode, {IDS_PD_EXTRAP, IDS_PD_DELAY}),
        field::Of(IDC_PD_DYN, par::PosPdDyn),
        field::Of(IDC_PD_TEXTR, par::PosPdTextr),
        field::Of(IDC_PD_PERIOD, par::PosPdPeriod),
        field::Shown(IDC_PD_VERSION, par::PosPdVer),
    };
}

}  // namespace

CPositioningPdPP::CPositioningPdPP(basekit::CSmartPtr<devio::IReceiver> receiver)
    : CParamPage(std::move(receiver), IDS_PAGE_PD_SOLUTION, kSolution, SolutionFields(), &kSolutionWide) {
    connect(m_controls.Get<QPushButton>(IDC_PD_RESET), &QPushButton::clicked, this, [this] { OnResetSolution(); });
}

bool CPositioningPdPP::OnResetSolution() {
    if (uikit::CMessageBoxService::Show(this, LoadResString(IDS_CONFIRM_PD_RESET), LoadResString(IDS_POSITIONING),
                                        uikit::MB_YESNO | uikit::MB_ICONQUESTION) != uikit::IDYES)
        return false;
    RunJob([](CJobContext& job) { job.Mate().Do(par::PosPdReset); }, [](const JOB_RESULT<void>&) {});
    return true;
}

void CPositioningPdPP::UpdateOwnControls(bool usable) { m_controls.Item(IDC_PD_RESET)->setEnabled(usable); }

CPositioningPS::CPositioningPS(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent)
    : CFenkPropertySheet(receiver, LoadResString(IDS_POSITIONING), parent, L"CPositioningPS"),
      m_general(receiver, IDS_PAGE_POSITION, kGeneral, GeneralFields(), &kGeneralWide),
      m_solution(receiver) {
    auto* masks = m_general.Controls().Get<QTreeWidget>(IDC_OUT_ELM);
    masks->setHeaderLabels({LoadResString(IDS_COL_OUTPUT).ToQString(), LoadResString(IDS_COL_ELEVATION_MASK).ToQString()});
    AddPage(&m_general);
    AddPage(&m_solution);
}

CPositioningPS::~CPositioningPS() { DestroyWindow(); }
