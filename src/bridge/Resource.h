// What a resource's source file needs, beside the headers of its family. The file ends with `template struct
// Entry<Resource>;` for its class.
#pragma once

#include "bridge/Data.h"
#include "bridge/Entry.h"
#include "bridge/Errors.h"
#include "bridge/MonitorBridgeTemplate.h"
#include "bridge/Step.h"

namespace torvo::bridge {

using pocketjson::Value;

}  // namespace torvo::bridge
