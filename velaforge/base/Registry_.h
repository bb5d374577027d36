// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

#include <map>
#include <string>
#include <vector>

namespace vfBase {

class ClassInfo;
class VfObject;

/// All class records of the process, and creation by name.
///
///     std::unique_ptr<vfBase::VfObject> object(vfBase::Registry_::instance().createType("solar::Planet"));
///     auto* planet = dynamic_cast<Planet*>(object.get());
///
/// Class records add themselves while libraries are loaded, on the loading thread; there is no lock.
class VFBASE_EXPORT Registry_
{
public:
    /// @return the one registry; usable during static initialisation, and until the last class record is
    ///         destroyed
    static Registry_& instance();

    /// Creates an object by class id ("solar::Planet") or, where no class has that id, by class name
    /// ("Planet"). Of several records with one name the first registered answers.
    /// @param name  null is allowed and names no class
    /// @return a new object, owned by the caller; null for an unknown name and for a class without a creator
    VfObject* createType(const char* name) const;

    /// Looks a class up as createType does.
    /// @return the record, null when there is none
    const ClassInfo* findClass(const char* name) const;

    /// @return the record that answers for each class id, in order of the ids
    std::vector<const ClassInfo*> getClasses() const;

private:
    friend class ClassInfo;

    using Records = std::map<std::string, std::vector<const ClassInfo*>, std::less<>>;

    Registry_() = default;
    ~Registry_() = default;
    Registry_(const Registry_&) = delete;
    Registry_& operator=(const Registry_&) = delete;

    void add(const ClassInfo* record);
    void remove(const ClassInfo* record);

    Records m_byId;
    Records m_byName;
};

} // namespace vfBase
