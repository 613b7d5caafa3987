#pragma once
#include <functional>
#include <map>
#include <type_traits>
#include <vector>

#include "fenklib/FenkLaunchers.h"

// Every launcher is called by the host in the same way, (receiver, parent); what else it takes
// its declared type says, and the host supplies a realistic sample of it (a position near a
// survey mark, a list of radio channels, a receiver file copied into the temporary folder, ...).
using LauncherReceiver = basekit::CSmartPtr<devio::IReceiver>;
using LauncherInvoker = std::function<int(LauncherReceiver, QWidget*)>;

// One overload per launcher type the host has samples for.
LauncherInvoker SampleCall(int (*run)(LauncherReceiver, QWidget*));
LauncherInvoker SampleCall(int (*run)(QWidget*));
LauncherInvoker SampleCall(int (*run)(QWidget*, const std::vector<double>&, double&));
LauncherInvoker SampleCall(int (*run)(LauncherReceiver, QWidget*, devio::vok::POS_XYZ&));
LauncherInvoker SampleCall(int (*run)(LauncherReceiver, QWidget*, devio::vok::POS_GEO&));
LauncherInvoker SampleCall(int (*run)(LauncherReceiver, QWidget*, int));
LauncherInvoker SampleCall(int (*run)(LauncherReceiver, QWidget*, const wchar_t*, const wchar_t*, bool));
LauncherInvoker SampleCall(int (*run)(LauncherReceiver, QWidget*, PROGRESS_INFO));
LauncherInvoker SampleCall(int (*run)(LauncherReceiver, QWidget*, std::vector<devio::vok::MSG>&));
LauncherInvoker SampleCall(int (*run)(LauncherReceiver, QWidget*, devio::vok::MSG&));
LauncherInvoker SampleCall(int (*run)(LauncherReceiver, QWidget*, basekit::ustring&));
LauncherInvoker SampleCall(int (*run)(QWidget*, int&));
LauncherInvoker SampleCall(int (*run)(QWidget*, int&, const std::map<wchar_t, basekit::ustring>&));
// Arguments the host has no sample of (a modem, a port being flashed): bound, never called.
template <typename Function>
LauncherInvoker SampleCall(Function*) {
    return {};
}

// What the declared type of a launcher says about it: whether its window works on a receiver,
// and whether it takes anything besides the receiver and the parent (a value to edit).
template <typename Function>
struct LAUNCHER_TYPE;
template <typename... Args>
struct LAUNCHER_TYPE<int(Args...)> {
    static constexpr bool takesReceiver = (std::is_same_v<std::decay_t<Args>, LauncherReceiver> || ...);
    static constexpr bool takesValue = sizeof...(Args) > (takesReceiver ? 2 : 1);
};
