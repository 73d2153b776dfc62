#include <memory>
#include <utility>

#include "core/mGlobal.h"

namespace mirelo::mGlobal {

namespace {
std::shared_ptr<cQTStreaming> streaming_object;
}

void SetStreamingObject(std::shared_ptr<cQTStreaming> object) { streaming_object = std::move(object); }

std::shared_ptr<cQTStreaming> StreamingObject() { return streaming_object; }

}  // namespace mirelo::mGlobal
