// The transfer of a package to a monitor, block by block. Other threads go on meanwhile, and other transfers.
#include <algorithm>
#include <thread>

#include "simulator/core/Recorder.h"
#include "simulator/libfwupdate/FirmwareCall.h"

using simulator::Answer;
using simulator::Firmware;
using simulator::FirmwareCall;
using simulator::FirmwarePackage;
using simulator::Monitor;
using simulator::State;
using simulator::World;
namespace result = simulator::result;

namespace {

/// What is fixed when it starts; the monitor itself may be unplugged at any time.
struct Transfer {
    FWHidHandle monitor;
    const FirmwarePackage& package;
    Firmware behaviour;
    FWTransferProgressCallback callback;
    void* context;

    std::uint32_t send() const {
        for (std::uint32_t block = 1; block <= package.blockCount(); ++block)
            if (const auto code = send(block); code != result::success) return code;
        return result::success;
    }

    std::uint32_t send(std::uint32_t block) const {
        simulator::sleepFor(behaviour.blockTime);
        if (!reachesMonitor(block)) return result::connectionError;
        if (block == behaviour.failAtBlock) return result::stall;
        const auto bytes = std::min<std::uint64_t>(std::uint64_t{block} * package.blockSize, package.size());
        const TransferProgress progress{block, package.blockCount(), static_cast<std::uint32_t>(bytes), package.size()};
        return !callback || callback(&progress, context) ? result::success : result::canceled;
    }

    /// Whether the monitor is still there to take the block.
    bool reachesMonitor(std::uint32_t block) const {
        auto& state = State::instance();
        const std::lock_guard lock(state.mutex);
        const auto found = state.world.findMonitor(monitor);
        if (found && block == behaviour.unplugAtBlock) state.world.unplug(found->serial, found->product);
        return found;
    }

    /// On a thread of its own, whose calls and events belong to the caller's.
    std::uint32_t sendFromThread() const {
        std::uint32_t code = result::failed;
        std::thread sender([&, recording = simulator::currentRecording()] {
            const simulator::RecordingHandover handover(recording);
            code = send();
        });
        sender.join();
        return code;
    }
};

}  // namespace

DmResult FWMonitorTransferFirmwareData(FWHidHandle monitor, FWDfwFile* file, FWTransferProgressCallback progress,
                                       void* context) {
    FirmwareCall call(__func__, monitor, file);
    const auto opened = call.find(file);
    return call.run([&](World& world) -> Answer {
        auto found = world.findMonitor(monitor);
        if (!opened) return result::invalidArgument;
        if (!found) return result::connectionError;
        if (found->firmware.isBusy()) return result::alreadyUsed;
        if (opened->package.product != found->product) return result::invalidData;

        found->firmware.state = Firmware::State::transferring;
        const Transfer transfer{monitor, opened->package, found->firmware, progress, context};
        auto code = result::failed;
        {
            const simulator::ScopedUnlock unlock;
            code = transfer.behaviour.callbackThread ? transfer.sendFromThread() : transfer.send();
        }
        found = world.findMonitor(monitor);
        if (!found) return result::connectionError;
        const auto done = code == result::success;
        found->firmware.state = done ? Firmware::State::transferred : Firmware::State::idle;
        if (done) found->firmware.transferred = opened->package.version;
        return code;
    });
}
