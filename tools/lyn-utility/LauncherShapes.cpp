#include "tools/lyn-utility/LauncherShapes.h"

#include <QDir>

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

}  // namespace

LauncherInvoker SampleCall(int (*run)(Receiver, QWidget*)) {
    return [run](Receiver receiver, QWidget* parent) { return run(std::move(receiver), parent); };
}

LauncherInvoker SampleCall(int (*run)(QWidget*)) {
    return [run](Receiver, QWidget* parent) { return run(parent); };
}

LauncherInvoker SampleCall(int (*run)(QWidget*, const std::vector<double>&, double&)) {
    return [run](Receiver, QWidget* parent) {
        double chosen = kChosenChannel;
        return run(parent, kChannels, chosen);
    };
}

LauncherInvoker SampleCall(int (*run)(Receiver, QWidget*, devio::vok::POS_XYZ&)) {
    return [run](Receiver receiver, QWidget* parent) {
        devio::vok::POS_XYZ pos = kMarkXyz;
        return run(std::move(receiver), parent, pos);
    };
}

LauncherInvoker SampleCall(int (*run)(Receiver, QWidget*, devio::vok::POS_GEO&)) {
    return [run](Receiver receiver, QWidget* parent) {
        devio::vok::POS_GEO pos = kMarkGeo;
        return run(std::move(receiver), parent, pos);
    };
}

LauncherInvoker SampleCall(int (*run)(Receiver, QWidget*, int)) {
    return [run](Receiver receiver, QWidget* parent) { return run(std::move(receiver), parent, kFreeSlot); };
}

LauncherInvoker SampleCall(int (*run)(Receiver, QWidget*, const wchar_t*, const wchar_t*, bool)) {
    return [run](Receiver receiver, QWidget* parent) {
        const ustring target = ustring::FromQString(QDir::temp().filePath(QString::fromWCharArray(kCopyName)));
        return run(std::move(receiver), parent, kReceiverFile, target.c_str(), true);
    };
}

LauncherInvoker SampleCall(int (*run)(Receiver, QWidget*, PROGRESS_INFO)) {
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

LauncherInvoker SampleCall(int (*run)(Receiver, QWidget*, std::vector<MSG>&)) {
    return [run](Receiver receiver, QWidget* parent) {
        std::vector<MSG> list = BasicNmea();
        return run(std::move(receiver), parent, list);
    };
}

LauncherInvoker SampleCall(int (*run)(Receiver, QWidget*, MSG&)) {
    return [run](Receiver receiver, QWidget* parent) {
        MSG message = BasicNmea().front();
        return run(std::move(receiver), parent, message);
    };
}

LauncherInvoker SampleCall(int (*run)(Receiver, QWidget*, ustring&)) {
    return [run](Receiver receiver, QWidget* parent) {
        ustring name = BasicNmea().front().name;
        return run(std::move(receiver), parent, name);
    };
}

LauncherInvoker SampleCall(int (*run)(QWidget*, int&)) {
    return [run](Receiver, QWidget* parent) {
        int code = 0;
        return run(parent, code);
    };
}

LauncherInvoker SampleCall(int (*run)(QWidget*, int&, const std::map<wchar_t, ustring>&)) {
    return [run](Receiver, QWidget* parent) {
        int code = 0;
        return run(parent, code, Letters());
    };
}
