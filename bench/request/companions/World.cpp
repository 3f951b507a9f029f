#include "World.h"

namespace bench {

World& world() noexcept {
    static constinit World instance;
    return instance;
}

}  // namespace bench
