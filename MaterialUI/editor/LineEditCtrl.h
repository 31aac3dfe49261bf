#pragma once

#include "DynamicPropertyControl.h"

#include <QLineEdit>

/// Shows a text. Setting the text that is shown already announces nothing. It cannot undo by itself: whoever keeps the
/// records of the changes does.
class CLineEditCtrl : public kiv::TDynamicPropertyControl<std::string, QLineEdit> {
    Q_OBJECT

public:
    CLineEditCtrl(const QString& id, QWidget* parent);

    void SetTypedValue(const std::string& value) override;
    std::string GetTypedValue() const override;

signals:
    void ChangeProperty(const kiv::String& id, const kiv::CPropertyValuePtr& val);

public slots:
    void OnValueChanged(const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
};
