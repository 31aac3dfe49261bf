#pragma once

#include "DynamicPropertyControl.h"
#include "ImageWidget.h"

class QToolButton;

/// Shows a picture file, by its path (local 8-bit).
class CImageCtrl : public kiv::TDynamicPropertyControl<std::string, CImageWidget> {
    Q_OBJECT

public:
    CImageCtrl(const QString& id, QWidget* parent);

    /// Adds the button that makes a normal map; once.
    void AddNormalMapButton();

    void SetTypedValue(const std::string& value) override;
    std::string GetTypedValue() const override;

signals:
    void ChangeProperty(const kiv::String& id, const kiv::CPropertyValuePtr& val);
    void GenerateNormalMap(CImageCtrl* pControl);

public slots:
    /// Announces what is shown as a change of the user's.
    void OnValueChanged();
    void OnClickGenNormalMapButton();

private:
    QToolButton* m_normalMapButton = nullptr;
};
