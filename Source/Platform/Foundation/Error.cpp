#include "Platform/Foundation/Error.h"

namespace zornic {

std::string Error::localizedDescription() const {
    const auto& text = valueForKey(_userInfo, LocalizedDescriptionKey).asText();
    return text.empty() ? _domain + " (" + std::to_string(_code) + ")" : text;
}

std::string Error::localizedFailureReason() const {
    return valueForKey(_userInfo, LocalizedFailureReasonKey).asText();
}

}  // namespace zornic
