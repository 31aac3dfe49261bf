#pragma once

#include <kiv/AppearancePreviewer.h>

class QTableWidgetItem;

/// Puts the flat preview of an appearance into a table item: a colour as its background, a texture as the file of
/// role 255, which ImageDelegate draws.
class CAppearancePreviewerQt : public kiv::CAppearancePreviewer {
public:
    /// The item is borrowed.
    explicit CAppearancePreviewerQt(QTableWidgetItem* item) : m_item(item) {}

    void Preview(const kiv::CVec4<float>& color) override;
    void Preview(const kiv::String& imageFile) override;

private:
    QTableWidgetItem* m_item;
};
