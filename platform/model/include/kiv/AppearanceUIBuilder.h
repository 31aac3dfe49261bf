#pragma once

#include <kiv/Types.h>

#include <map>
#include <vector>

namespace kiv {

/// One element of a template's panel: string attributes by name, and for a group its children.
///
/// Attributes: "type" (LineEdit, GroupBox, ColorButton, ImageButton, SpinBox, Separator, Label), "id" (name of the
/// control and key that edits are written to), "parameter" (key of the value shown), "label" and "tooltip" (shown
/// through LocalizeUiString), "checkable" (of a group: "1" or absent), "range" ("0~1"), "unit" ("m").
class CAppearanceUIElement {
public:
    CAppearanceUIElement() = default;
    CAppearanceUIElement(std::map<String, String> attributes, std::vector<CAppearanceUIElement> children)
        : m_attributes(std::move(attributes)), m_children(std::move(children))
    {
    }

    bool HasAttribute(const String& name) const { return m_attributes.count(name) != 0; }
    /// The attribute's text; empty when absent.
    String GetAttribute(const String& name) const
    {
        const auto found = m_attributes.find(name);
        return found == m_attributes.end() ? String() : found->second;
    }
    /// "StackPanels": the children of a group, in order.
    const std::vector<CAppearanceUIElement>& GetStackPanels() const { return m_children; }

private:
    std::map<String, String> m_attributes;
    std::vector<CAppearanceUIElement> m_children;
};

/// Receives the elements of a panel from CAppearanceLibraryManager::BuildUI, in description order, a group before its
/// children. `parentGroup` is the "id" of the group that the element lies in, empty at the top level. An answer of
/// false ends the walk. The order of the operations is an interface to hosts.
class CAppearanceUIBuilder {
public:
    virtual ~CAppearanceUIBuilder() = default;

    virtual bool BuildNameLine(const CAppearanceUIElement& element, const String& parentGroup) = 0;
    virtual bool BuildGroup(const CAppearanceUIElement& element, const String& parentGroup) = 0;
    virtual bool BuildColor(const CAppearanceUIElement& element, const String& parentGroup) = 0;
    virtual bool BuildImage(const CAppearanceUIElement& element, const String& parentGroup) = 0;
    virtual bool BuildNumber(const CAppearanceUIElement& element, const String& parentGroup) = 0;
    virtual bool BuildSeparator(const CAppearanceUIElement& element, const String& parentGroup) = 0;
    virtual bool BuildLabel(const CAppearanceUIElement& element, const String& parentGroup) = 0;
};

}  // namespace kiv
