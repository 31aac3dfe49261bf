#pragma once

#include <kiv/PropertySet.h>

namespace kiv {

/// One rendering material, or one of its texture sub-appearances ("template" is then "Texture"). Its data are its
/// properties; the operations here are readers and writers of well-known keys. Held and passed by
/// CAppearanceInstancePtr; nobody deletes one. Not locked: user-interface thread.
///
/// An appearance read or created from a template holds a value for every parameter of that template; a key that the
/// template does not declare is kept and written back all the same.
class CAppearanceInstance : public CPropertySet {
public:
    /// An appearance of the template with all its defaults and its own texture sub-appearances; a null template gives
    /// an empty property set.
    explicit CAppearanceInstance(CAppearanceTemplatePtr appearanceTemplate = {});

    /// Copying goes through Clone and Assign, which know what belongs to the identity.
    CAppearanceInstance(const CAppearanceInstance&) = delete;
    CAppearanceInstance& operator=(const CAppearanceInstance&) = delete;

    /// The template that it was made from; null for a template name that nobody knew.
    const CAppearanceTemplatePtr& GetTemplate() const { return m_template; }
    String GetTemplateName() const;  ///< property "template"

    String GetId() const;  ///< property "id"
    void SetId(const String& id);
    String GetName() const;  ///< property "name": the stored name; shown through LocalizeAppearanceString
    void SetName(const String& name);
    String GetTags() const;  ///< property "tags"
    void SetTags(const String& tags);
    /// Property "category": the place in the browser's tree; "/" separates levels, the first is a type name.
    String GetCategory() const;
    void SetCategory(const String& category);

    /// Property "edit_type": 0 read-only system appearance or favourite, 1 and above editable.
    int GetEditType() const;
    void SetEditType(int editType);

    /// Known to the cloud copy of the favourite library. A state of this process: neither a property nor written.
    bool GetCloudFlag() const { return m_cloudFlag; }
    void SetCloudFlag(bool cloud) { m_cloudFlag = cloud; }

    /// Property "diffuse_color": red, green, blue, alpha, 0..1. SetDiffuse also stores the alpha under "transparent".
    CVec4<float> GetDiffuse() const;
    void SetDiffuse(const CVec4<float>& color);
    /// Property "transparent": opacity, 1 opaque to 0 invisible; also becomes the alpha of an existing "diffuse_color".
    float GetTransparent() const;
    void SetTransparent(float opacity);

    bool GetUseDiffuseTexture() const;  ///< property "useBaseTexture"
    void SetUseDiffuseTexture(bool use);
    bool GetUseBumpTexture() const;  ///< property "enableBump"
    void SetUseBumpTexture(bool use);

    /// The texture sub-appearance itself (not a copy), or null when the appearance has none.
    CAppearanceInstancePtr GetDiffuseTexture() const;  ///< property "diffuse_texture"
    CAppearanceInstancePtr GetBumpTexture() const;     ///< property "bump_texture"

    /// Property "texture_file" of a texture sub-appearance: a stored path (either separator), relative or absolute.
    String GetTextureFile() const;
    void SetTextureFile(const String& path);

    /// A deep copy (own sub-appearances, shared values) with the given id; the cloud flag comes along.
    CAppearanceInstancePtr Clone(const String& newId) const;

    /// Becomes a deep copy of `other`, identity (id, name, category, edit type, cloud flag, template) included.
    void Assign(const CAppearanceInstance& other);

    /// Takes over the look of `other` and keeps the own identity: "id", "name", "category", "edit_type" and the cloud
    /// flag stay as they are.
    /// `takeTemplate` false: the own template stays; of the keys that the other's template declares only those are
    /// taken that the own template declares with the same type. True: the other's template is taken too.
    /// `exact` false: own properties that the other lacks stay. True: they go; those that the template declares go back
    /// to its defaults. Keys that no template declares always come along. Textures are deep copies that refer to the
    /// same files.
    void IncompleteAssign(const CAppearanceInstance& other, bool takeTemplate, bool exact);
    void IncompleteAssign(const CAppearanceInstancePtr& other, bool takeTemplate, bool exact);

private:
    friend class CAppearanceDocumentReader;

    CAppearanceTemplatePtr m_template;
    bool m_cloudFlag = false;
};

/// Same template name, same keys and equal values, sub-appearances included. The cloud flag is not compared.
bool AreEqual(const CAppearanceInstance& a, const CAppearanceInstance& b);

/// True for a texture sub-appearance: its "template" is exactly "Texture".
bool IsTexture(const CAppearanceInstance& appearance);

}  // namespace kiv
