// The one state of the simulated world, shared by all simulated libraries of the process.
#pragma once

#include <memory>
#include <mutex>
#include <set>
#include <string>

#include "simulator/core/Handles.h"
#include "simulator/core/Scripts.h"
#include "simulator/core/World.h"

namespace simulator {

struct State {
    State();

    std::mutex mutex;  ///< guards everything else
    World initial;     ///< the world as the scenario has it
    World world;
    std::shared_ptr<const Json> scenario;  ///< what `initial` was read from
    std::string scenarioName;
    std::shared_ptr<const Json> document{};  ///< the scenario that is none of the ready ones, if one was loaded
    Scripts scripts;
    Handles handles;
    std::set<std::string> texts;  ///< texts handed out for the life of the process

    static State& instance();
};

}  // namespace simulator
