#pragma once

#include "Platform/Foundation/DispatchQueue.h"

namespace zornic {

/** Many requests in one turn of the main loop cause one update. Main thread; dropped with its owner. */
class Coalescer {
public:
    explicit Coalescer(Task update) : _update(std::make_shared<Task>(std::move(update))) {}
    void request();

private:
    std::shared_ptr<Task> _update;
    std::shared_ptr<bool> _pending = std::make_shared<bool>(false);
};

}  // namespace zornic
