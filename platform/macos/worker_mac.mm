#include "platform/macos/worker_mac.h"

#include "platform/macos/bridge/entry.h"

#include <memory>
#include <utility>

namespace trovel {

WorkerMac::WorkerMac() : queue_(dispatch_queue_create("Trovel.worker", DISPATCH_QUEUE_SERIAL)) {}

void WorkerMac::run(Task task) {
    // Native blocks copy what they capture, so this one shares the function instead.
    auto const shared = std::make_shared<Task>(std::move(task));
    dispatch_async(queue_, ^{
      @autoreleasepool {
          enter(*shared);
      }
    });
}

} // namespace trovel
