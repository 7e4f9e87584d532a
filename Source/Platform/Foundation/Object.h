#pragma once

#include <memory>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace zornic {

/** Base of everything that is shared and has an identity: views, controllers, queries, items, services. */
class Object : public std::enable_shared_from_this<Object> {
public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;

    /** Second step of making: runs once the object is owned, so that it may hand itself out (become a
       delegate, register as a listener). Overrides call their base first. */
    virtual void didMake() {}

    /** Name of the object's class without its namespace, as "ZRNSongsViewController". */
    std::string className() const;
};

/** Makes an object and runs its `didMake()`. The only way in which an `Object` comes to be. */
template <class T, class... Arguments>
std::shared_ptr<T> make(Arguments&&... arguments) {
    auto object = std::make_shared<T>(std::forward<Arguments>(arguments)...);
    if constexpr (std::is_base_of_v<Object, T>) static_cast<Object&>(*object).didMake();
    return object;
}

/** Strong reference to an object known by plain pointer, to it or to an interface of it; empty for none, or
   while it is being destroyed. */
template <class T>
std::shared_ptr<T> strong(T* object) {
    if (!object) return nullptr;
    if constexpr (std::is_base_of_v<Object, T>)
        return std::dynamic_pointer_cast<T>(object->weak_from_this().lock());
    else
        return std::dynamic_pointer_cast<T>(dynamic_cast<Object&>(*object).weak_from_this().lock());
}

/** Weak reference to an object known by plain pointer, usable in its constructor's successor `didMake()` and
 * later. */
template <class T>
std::weak_ptr<T> weak(T* object) {
    return strong(object);
}

/** Class name of a type, without namespace. */
std::string classNameOf(const std::type_info& type);
template <class T>
std::string classNameOf() {
    return classNameOf(typeid(T));
}

}  // namespace zornic
