#include "tools/lyn-utility/LauncherShapes.h"

#include <QDir>
#include <iterator>
#include <map>
#include <vector>

#include "fenklib/files/ProgressInfo.h"
#include "fenklib/receiver/VokTypes.h"
#include "tools/lyn-utility/HostStrings.h"

using basekit::ustring;
using devio::vok::MSG;
using Receiver = basekit::CSmartPtr<devio::IReceiver>;

namespace {

// Samples a host would pass. A UHF band plan of a survey radio (MHz); a position near a survey
// mark given both ways; the place after the receiver's two seeded points; a file every
// receiver of the family keeps, copied out of harm's way; the messages of a basic NMEA output.
const std::vector<double> kChannels = {450.125, 450.250, 451.375, 455.500, 457.050, 462.625, 464.500, 467.775};
constexpr double kChosenChannel = 455.500;
constexpr devio::vok::POS_XYZ kMarkXyz{4325308.845, 565601.688, 4638382.431};
constexpr devio::vok::POS_GEO kMarkGeo{46.9500123, 7.4500456, 560.215};
constexpr int kFreeSlot = 2;
constexpr const wchar_t* kReceiverFile = L"/com/a/profile/default";
constexpr const wchar_t* kCopyName = L"lyn-utility-profile-copy.txt";
constexpr int kProgressSteps = 20;

std::vector<MSG> BasicNmea() {
    return {{L"nmea/GGA", 1.0, 0.0, 0, 0}, {L"nmea/RMC", 1.0, 0.0, 0, 0}, {L"nmea/GSV", 5.0, 0.0, 0, 0}};
}

std::map<wchar_t, ustring> Letters() {
    return {{L'C', ustring::FromQString(QDir::homePath())}, {L'T', ustring::FromQString(QDir::tempPath())}};
}

template <typename Function>
Function As(QFunctionPointer entry) {
    return reinterpret_cast<Function>(entry);
}

LauncherInvoker ReceiverParent(QFunctionPointer entry) {
    const auto run = As<int (*)(Receiver, QWidget*)>(entry);
    return [run](Receiver receiver, QWidget* parent) { return run(std::move(receiver), parent); };
}

LauncherInvoker Parent(QFunctionPointer entry) {
    const auto run = As<int (*)(QWidget*)>(entry);
    return [run](Receiver, QWidget* parent) { return run(parent); };
}

LauncherInvoker ChannelList(QFunctionPointer entry) {
    const auto run = As<int (*)(QWidget*, const std::vector<double>&, double&)>(entry);
    return [run](Receiver, QWidget* parent) {
        double chosen = kChosenChannel;
        return run(parent, kChannels, chosen);
    };
}

LauncherInvoker XyzPosition(QFunctionPointer entry) {
    const auto run = As<int (*)(Receiver, QWidget*, devio::vok::POS_XYZ&)>(entry);
    return [run](Receiver receiver, QWidget* parent) {
        devio::vok::POS_XYZ pos = kMarkXyz;
        return run(std::move(receiver), parent, pos);
    };
}

LauncherInvoker GeoPosition(QFunctionPointer entry) {
    const auto run = As<int (*)(Receiver, QWidget*, devio::vok::POS_GEO&)>(entry);
    return [run](Receiver receiver, QWidget* parent) {
        devio::vok::POS_GEO pos = kMarkGeo;
        return run(std::move(receiver), parent, pos);
    };
}

LauncherInvoker PointSlot(QFunctionPointer entry) {
    const auto run = As<int (*)(Receiver, QWidget*, int)>(entry);
    return [run](Receiver receiver, QWidget* parent) { return run(std::move(receiver), parent, kFreeSlot); };
}

LauncherInvoker CopyFile(QFunctionPointer entry) {
    const auto run = As<int (*)(Receiver, QWidget*, const wchar_t*, const wchar_t*, bool)>(entry);
    return [run](Receiver receiver, QWidget* parent) {
        const ustring target = ustring::FromQString(QDir::temp().filePath(QString::fromWCharArray(kCopyName)));
        return run(std::move(receiver), parent, kReceiverFile, target.c_str(), true);
    };
}

LauncherInvoker Progress(QFunctionPointer entry) {
    const auto run = As<int (*)(Receiver, QWidget*, PROGRESS_INFO)>(entry);
    return [run](Receiver receiver, QWidget* parent) {
        PROGRESS_INFO info;
        info.text = HostText(HS_PROGRESS_SAMPLE);
        info.rangeHigh = kProgressSteps;
        info.work = [](CJobContext& job) {
            for (int step = 1; step <= kProgressSteps && !job.IsStopping(); ++step) job.Progress(step, kProgressSteps);
        };
        return run(std::move(receiver), parent, std::move(info));
    };
}

LauncherInvoker MessageList(QFunctionPointer entry) {
    const auto run = As<int (*)(Receiver, QWidget*, std::vector<MSG>&)>(entry);
    return [run](Receiver receiver, QWidget* parent) {
        std::vector<MSG> list = BasicNmea();
        return run(std::move(receiver), parent, list);
    };
}

LauncherInvoker Message(QFunctionPointer entry) {
    const auto run = As<int (*)(Receiver, QWidget*, MSG&)>(entry);
    return [run](Receiver receiver, QWidget* parent) {
        MSG message = BasicNmea().front();
        return run(std::move(receiver), parent, message);
    };
}

LauncherInvoker MessageName(QFunctionPointer entry) {
    const auto run = As<int (*)(Receiver, QWidget*, ustring&)>(entry);
    return [run](Receiver receiver, QWidget* parent) {
        ustring name = BasicNmea().front().name;
        return run(std::move(receiver), parent, name);
    };
}

LauncherInvoker ParentCode(QFunctionPointer entry) {
    const auto run = As<int (*)(QWidget*, int&)>(entry);
    return [run](Receiver, QWidget* parent) {
        int code = 0;
        return run(parent, code);
    };
}

LauncherInvoker ParentCodeLetters(QFunctionPointer entry) {
    const auto run = As<int (*)(QWidget*, int&, const std::map<wchar_t, ustring>&)>(entry);
    return [run](Receiver, QWidget* parent) {
        int code = 0;
        return run(parent, code, Letters());
    };
}

struct SHAPE_ROW {
    LauncherShape shape;
    LauncherInvoker (*make)(QFunctionPointer);
    bool takesReceiver;
};
constexpr SHAPE_ROW kShapes[] = {
    {LauncherShape::ReceiverParent, &ReceiverParent, true},
    {LauncherShape::Parent, &Parent, false},
    {LauncherShape::ChannelList, &ChannelList, false},
    {LauncherShape::XyzPosition, &XyzPosition, true},
    {LauncherShape::GeoPosition, &GeoPosition, true},
    {LauncherShape::PointSlot, &PointSlot, true},
    {LauncherShape::CopyFile, &CopyFile, true},
    {LauncherShape::Progress, &Progress, true},
    {LauncherShape::MessageList, &MessageList, true},
    {LauncherShape::Message, &Message, true},
    {LauncherShape::MessageName, &MessageName, true},
    {LauncherShape::ParentCode, &ParentCode, false},
    {LauncherShape::ParentCodeLetters, &ParentCodeLetters, false},
};

}  // namespace

LauncherInvoker MakeInvoker(LauncherShape shape, QFunctionPointer entry) {
    for (const SHAPE_ROW& row : kShapes)
        if (row.shape == shape) return row.make(entry);
    return {};
}

bool TakesReceiver(LauncherShape shape) {
    for (const SHAPE_ROW& row : kShapes)
        if (row.shape == shape) return row.takesReceiver;
    return true;
}
