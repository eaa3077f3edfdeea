#pragma once

#include "platform/worker.h"

#import <Foundation/Foundation.h>

namespace trovel {

/// A serial dispatch queue.
class WorkerMac final : public Worker {
public:
    WorkerMac();

    void run(Task task) override;

private:
    dispatch_queue_t _Nonnull queue_;
};

} // namespace trovel
