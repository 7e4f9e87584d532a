#include "Host/Library/StorageTrouble.h"

#include <algorithm>

#include "Host/Log.h"

namespace helmo {

void StorageTroubles::log(const std::string& line) {
    std::lock_guard lock(_mutex);
    if (_lines.insert(line).second) logLine(line);
}

void StorageTroubles::add(StorageTrouble trouble) {
    Handler handler;
    {
        std::lock_guard lock(_mutex);
        if (std::ranges::find(_troubles, trouble) == _troubles.end()) _troubles.push_back(trouble);
        handler = _handler;
    }
    if (handler) handler(trouble);
}

void StorageTroubles::setHandler(Handler handler) {
    std::vector<StorageTrouble> troubles;
    {
        std::lock_guard lock(_mutex);
        troubles = _troubles;
        _handler = handler;
    }
    if (!handler) return;
    for (const auto trouble : troubles) handler(trouble);
}

}  // namespace helmo
