#pragma once

#include "DynamicProperty.h"

#include <QKeyEvent>
#include <QString>
#include <QWidget>

namespace kiv {

/// A widget that shows one property of type T. The property's key is the widget's object name.
///
/// A concrete control connects the widget's change signal to its slot OnValueChanged, which announces each change by
/// ChangeProperty(key, GetValue()), those that SetValue causes included: nothing is compared or filtered.
template <typename T, typename Widget>
class TDynamicPropertyControl : public Widget, public CDynamicProperty {
public:
    TDynamicPropertyControl(const QString& id, QWidget* parent) : Widget(parent) { this->setObjectName(id); }

    void SetValue(const CPropertyValuePtr& value) override
    {
        if (value)
            SetTypedValue(value->Get<T>());
    }
    CPropertyValuePtr GetValue() const override { return MakePropertyValue<T>(GetTypedValue()); }

    virtual void SetTypedValue(const T& value) = 0;
    virtual T GetTypedValue() const = 0;

protected:
    /// The key as it is now.
    String GetId() const { return this->objectName().toLocal8Bit().toStdString(); }

    // Whoever keeps the records takes changes back by the key: the undoing of the text alone would be one more change.
    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::ShortcutOverride || !static_cast<QKeyEvent*>(event)->matches(QKeySequence::Undo))
            return Widget::event(event);
        event->ignore();
        return false;
    }
};

}  // namespace kiv
