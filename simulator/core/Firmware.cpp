#include "simulator/core/Firmware.h"

namespace simulator {

void Firmware::update() {
    state = State::updating;
    pollsLeft = updatePolls;
    if (pollsLeft == 0) poll();
}

Firmware::State Firmware::poll() {
    if (state == State::updating && pollsLeft-- == 0) {
        if (updateEnd == UpdateEnd::newVersion) version = transferred;
        state = updateEnd == UpdateEnd::gone ? State::gone : State::idle;
    }
    return state;
}

}  // namespace simulator
