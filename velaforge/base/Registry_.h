// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

#include <map>
#include <string>
#include <vector>

namespace vfBase {

class ClassInfo;
class VfObject;

/// Holds the class records of the process and makes objects by name.
///
///     std::unique_ptr<vfBase::VfObject> object(vfBase::Registry_::instance().createType("solar::Planet"));
///     auto* planet = dynamic_cast<Planet*>(object.get());
///
/// Records are registered while libraries are loaded, on the loading thread. There is no lock: read the
/// registry afterwards only.
class VFBASE_EXPORT Registry_
{
public:
    /// Returns the only registry. Usable during static initialisation and until the last class record was
    /// destroyed.
    static Registry_& instance();

    /// Makes an object by class id ("solar::Planet") or, if no class has that id, by class name ("Planet").
    /// Of several records with one name the first registered is used.
    /// @param name  null counts as an unknown name
    /// @return a new object, owned by the caller; null for an unknown name and for a class without a creator
    VfObject* createType(const char* name) const;

    /// Finds the class record that createType would use.
    /// @return null if there is none
    const ClassInfo* findClass(const char* name) const;

    /// Returns the record that createType uses for each class id, in order of the ids.
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
