// The transfer of a package to a monitor, block by block. Other threads go on meanwhile, and other transfers.
#include <algorithm>
#include <thread>

#include "simulator/core/Simulator.h"
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

/// As told to the monitor at its start; the monitor itself may go at any time.
struct Transfer {
    FWHidHandle monitor;
    const FirmwarePackage& package;
    Firmware conduct;
    FWTransferProgressCallback callback;
    void* context;

    std::uint32_t send() const {
        for (std::uint32_t block = 1; block <= package.blockCount(); ++block)
            if (const auto code = send(block); code != result::success) return code;
        return result::success;
    }

    std::uint32_t send(std::uint32_t block) const {
        std::this_thread::sleep_for(conduct.blockTime);
        if (!touchMonitor(block)) return result::connectionError;
        if (block == conduct.failAtBlock) return result::stall;
        const auto bytes = std::min<std::uint64_t>(std::uint64_t{block} * package.blockSize, package.size());
        const TransferProgress progress{block, package.blockCount(), static_cast<std::uint32_t>(bytes), package.size()};
        return !callback || callback(&progress, context) ? result::success : result::canceled;
    }

    /// Whether the monitor is still there to take the block.
    bool touchMonitor(std::uint32_t block) const {
        auto& state = State::instance();
        const std::lock_guard lock(state.mutex);
        const auto found = state.world.findMonitor(monitor);
        if (found && block == conduct.unplugAtBlock) state.world.unplug(found->product, found->serial);
        return found;
    }

    /// On a thread of its own, whose doings belong to the caller's.
    std::uint32_t sendFromThread() const {
        std::uint32_t code = result::failed;
        std::thread sender([&, recording = simulator::Recording::current()] {
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
    return static_cast<DmResult>(call.run([&](World& world) {
        auto found = world.findMonitor(monitor);
        if (!opened) return Answer{result::invalidArgument};
        if (!found) return Answer{result::connectionError};
        if (found->firmware.isBusy()) return Answer{result::alreadyUsed};
        if (opened->package.product != found->product) return Answer{result::invalidData};

        found->firmware.state = Firmware::State::transferring;
        const Transfer transfer{monitor, opened->package, found->firmware, progress, context};
        auto code = result::failed;
        {
            const simulator::Intermission others;
            code = transfer.conduct.callbackThread ? transfer.sendFromThread() : transfer.send();
        }
        found = world.findMonitor(monitor);
        if (!found) return Answer{result::connectionError};
        const auto done = code == result::success;
        found->firmware.state = done ? Firmware::State::transferred : Firmware::State::idle;
        if (done) found->firmware.transferred = opened->package.version;
        return Answer{code};
    }));
}
