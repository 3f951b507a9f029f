#include "simulator/core/Firmware.h"

namespace simulator {

void Firmware::update() {
    state = State::updating;
    pollsLeft = updatePolls;
    if (pollsLeft == 0) poll();
}

Firmware::State Firmware::poll() {
    if (state == State::updating && pollsLeft-- == 0) {
        version = transferred;
        state = State::idle;
    }
    return state;
}

}  // namespace simulator
