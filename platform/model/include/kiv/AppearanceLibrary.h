#pragma once

#include <kiv/Types.h>

#include <map>

namespace kiv {

/// A named collection of appearances, in the order of their identifiers. Not locked: user-interface thread.
class CAppearanceLibrary {
public:
    using Map = std::map<String, CAppearanceInstancePtr>;
    using const_iterator = Map::const_iterator;

    const String& GetName() const { return m_name; }
    void SetName(const String& name) { m_name = name; }
    const String& GetId() const { return m_id; }
    void SetId(const String& id) { m_id = id; }

    const_iterator begin() const { return m_appearances.begin(); }
    const_iterator end() const { return m_appearances.end(); }
    std::size_t count() const { return m_appearances.size(); }

    /// The appearance of the id, or null.
    CAppearanceInstancePtr FindInstance(const String& id) const;
    /// True if added: false for null, for an empty id and for an id that the library has.
    /// The id is read once: to rename an appearance, delete it, set its id and add it again.
    bool AddInstance(const CAppearanceInstancePtr& appearance);
    /// True if removed.
    bool DeleteInstance(const String& id);

private:
    String m_name;
    String m_id;
    Map m_appearances;
};

}  // namespace kiv
