#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace zornic {

/** What is known of a class by its name at run time. Subclasses carry what the class's users need (a
 * factory). */
class ClassDescriptor {
public:
    virtual ~ClassDescriptor() = default;
};

/** Classes by name, looked up when asked, so that code can use what may or may not be there. Thread-safe. */
class ClassRegistry {
public:
    static ClassRegistry& shared();
    void registerClass(const std::string& name, std::shared_ptr<const ClassDescriptor> descriptor);
    void removeClass(const std::string& name);
    /** The class called `name`; none when there is none. */
    std::shared_ptr<const ClassDescriptor> classNamed(const std::string& name) const;

private:
    mutable std::mutex _mutex;
    std::map<std::string, std::shared_ptr<const ClassDescriptor>> _classes;
};

}  // namespace zornic
