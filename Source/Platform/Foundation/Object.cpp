#include "Platform/Foundation/Object.h"

#include <cstdlib>
#include <cxxabi.h>
#include <mutex>
#include <string_view>
#include <typeindex>
#include <unordered_map>

namespace zornic {

namespace {

/** Last part of a qualified name, without template arguments: what stands outside all brackets after the last
 * "::". */
std::string lastPart(std::string_view qualified) {
    std::string part;
    int depth = 0;
    for (std::size_t at = 0; at < qualified.size(); ++at) {
        const char letter = qualified[at];
        if (letter == '<' || letter == '(' || letter == '{') ++depth;
        if (depth == 0 && letter == ':')
            part.clear();
        else if (depth == 0)
            part += letter;
        if (letter == '>' || letter == ')' || letter == '}') --depth;
    }
    return part.empty() ? std::string(qualified) : part;
}

std::string readableName(const std::type_info& type) {
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
    return lastPart(status == 0 && name ? name.get() : type.name());
}

}  // namespace

std::string Object::className() const { return classNameOf(typeid(*this)); }

std::string classNameOf(const std::type_info& type) {
    // Lists ask for every row that they fill, and taking names apart is slow.
    static auto& mutex = *new std::mutex;
    static auto& names = *new std::unordered_map<std::type_index, std::string>;
    std::lock_guard lock(mutex);
    auto& name = names[type];
    if (name.empty()) name = readableName(type);
    return name;
}

}  // namespace zornic
