#pragma once
#include <chrono>
#include <memory>
#include <map>
#include <mutex>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tools/rcvsim/Constellation.h"
#include "tools/rcvsim/FaultPlan.h"
#include "tools/rcvsim/FileStore.h"
#include "tools/rcvsim/MessageCatalog.h"
#include "tools/rcvsim/Nmea.h"
#include "tools/rcvsim/OutputSchedule.h"
#include "tools/rcvsim/ParamTree.h"
#include "tools/rcvsim/Reply.h"
#include "tools/rcvsim/SimClock.h"
#include "tools/rcvsim/SimOptions.h"
#include "tools/rcvsim/TerminalLine.h"
#include "tools/rcvsim/CommandLine.h"

namespace rcvsim {

// Bytes the receiver sends on its own: periodic messages for one port, or events for all.
struct Output {
    std::string port;   // "dev/ser/a"; empty: every connection
    std::string bytes;  // whole NMEA sentences or frames
};

// The simulated receiver without any I/O: its parameters, files, output schedules and sky.
// Every public operation is safe to call from several connections' threads at once.
class Receiver {
public:
    Receiver(SimOptions options, std::shared_ptr<const SimClock> clock);

    // One host command line (";"-joined commands run in order, the first failure answers)
    // arriving through port `terminal` ("dev/ser/a", "dev/tcp/b", ...).
    Reply Execute(std::string_view line, std::string_view terminal);
    // Periodic output and events due at the clock's present time.
    std::vector<Output> Poll();

    FaultPlan Faults() const;
    void SetFaults(const FaultPlan& plan);
    // Characters per second of the port's line settings (rate over start+data+parity+stop
    // bits); 0 for a port without them.
    double PortBytesPerSecond(std::string_view port) const;
    // The port's line framing from its settings ("fodd" and "feven" frame as odd and even).
    LineSettings PortLine(std::string_view port) const;
    Fix CurrentFix() const;
    const SimOptions& Options() const { return options_; }
    // For tests: every "set," command the receiver took, in order (at most kWritesKept, the
    // latest), and how often the Bluetooth module's escape "#OFF#" arrived.
    static constexpr std::size_t kWritesKept = 1000;
    std::vector<std::string> Writes() const;
    int BluetoothEscapes() const;
    double Now() const { return clock_->Now(); }
    // The boot loader (ReceiverLoader.cpp): "init,/dev/boot" stops the firmware until an image
    // for this model with sound check sums arrives; installing one restarts into its version.
    // True from "init,/dev/boot" until an installed image has booted (Booting: the receiver
    // neither answers nor asks for an image while it starts).
    bool InLoader() const;
    bool Booting() const;
    bool CheckFirmware(std::string_view image) const;
    bool InstallFirmware(std::string_view image);
    std::string FirmwareVersion() const;

private:
    struct Context {
        std::string terminal;
        double now = 0;
    };
    using Args = std::vector<std::string>;
    using Handler = Reply (Receiver::*)(const Args&, const Context&);
    struct Command {
        std::string_view word;
        Handler handler;
    };
    static const Command kCommands[];

    Reply ExecuteOne(const std::string& command, const Context& ctx);
    // Command words.
    Reply Print(const Args& args, const Context& ctx);
    Reply Set(const Args& args, const Context& ctx);
    Reply List(const Args& args, const Context& ctx);
    Reply Enable(const Args& args, const Context& ctx);
    Reply DisableMessages(const Args& args, const Context& ctx);
    Reply Init(const Args& args, const Context& ctx);
    Reply Event(const Args& args, const Context& ctx);
    Reply Create(const Args& args, const Context& ctx);
    Reply Remove(const Args& args, const Context& ctx);
    Reply Sim(const Args& args, const Context& ctx);

    // print
    Reply PrintAttribute(const Target& t, const Context& ctx) const;
    Reply PrintFileAttributes(const StoredFile& file, std::string_view attribute,
                              std::string_view option) const;
    Reply PrintDirectory(std::string_view dir, std::string_view attribute) const;
    std::string NodeText(std::string_view path) const;
    std::string PortOutputs(const std::string& port) const;
    std::string Dump() const;
    std::string FileAttribute(const StoredFile& file, std::string_view name) const;
    // set
    Reply SetLeaf(const std::string& path, const std::string& value, const Context& ctx);
    Reply SetNode(const std::string& path, const std::string& value);
    Reply SetCurrentFile(const std::string& path, const std::string& value, const Context& ctx);
    std::optional<Reply> RunAction(const std::string& path, const std::string& value, const Context& ctx);
    Reply ClearItem(const std::string& path);
    // Files written in blocks: "<path>&upload:{offset}", "&commit", "&discard" (ReceiverUpload.cpp).
    Reply SetFileAttribute(const Target& t, const std::string& value, const Context& ctx);
    Reply UploadBlock(const std::string& path, std::string_view option, const std::string& hex);
    Reply CommitUpload(const std::string& path, const std::string& size, const Context& ctx);
    void SyncCoordinates(const std::string& path);
    void AddPoint(int slot, const std::string& name, int id, const std::string& date,
                  const Geodetic& where, bool automatic);
    // state
    void ResetParameters();
    void Restart();
    void SeedFiles(double now);
    void SeedPoints();
    void RefreshDerived();
    std::string ResolvePort(std::string_view raw, const Context& ctx) const;
    bool IsOutputPort(std::string_view port) const;
    std::string Value(std::string_view path) const;
    void AssignDerived(std::string_view path, std::string value);
    void SeedOldLogs(double before);
    std::string NewLogName(double now) const;
    void Rotate(double now);
    void RotateOnSchedule(double now);
    void SeedLogFolder(double before);
    void AdvanceLogging(double now);
    Fix MakeFix(double now) const;
    std::string MessageBytes(const std::string& name, const Fix& fix, double now) const;
    std::string DataLinkPayload(double now) const;
    static std::string TimeText(double t);
    Reply EnterLoader();
    void ApplyFirmware();

    mutable std::mutex mutex_;
    const SimOptions options_;
    const std::shared_ptr<const SimClock> clock_;
    const Constellation sky_;
    const double startTime_;
    ParamTree params_;
    FileStore files_;
    std::map<std::string, std::string, std::less<>> uploads_;   // bytes staged per final path
    MessageCatalog catalog_;
    OutputSchedule schedule_;
    FaultPlan faults_;
    std::vector<int> pendingEvents_;
    std::vector<std::string> writes_;
    int bluetoothEscapes_ = 0;
    double nextLogAt_ = 0;
    double nextRotationAt_ = 0;
    std::mt19937 rng_;
    bool inLoader_ = false;
    std::string firmwareVersion_;   // installed by the loader; empty: the factory's
    std::chrono::steady_clock::time_point bootUntil_{};
};

}  // namespace rcvsim
