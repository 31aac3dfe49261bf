#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class CChooseTypeDlg;
}

/// Asks for the type into which an appearance is to be converted.
class CChooseTypeDlg : public QDialog {
    Q_OBJECT

public:
    explicit CChooseTypeDlg(QWidget* parent);
    ~CChooseTypeDlg() override;

    /// Makes the type the current one; another than the thirteen offered changes nothing.
    void SetTypeName(const QString& typeName);
    /// The type chosen, as it is stored.
    QString GetTypeName() const;

private:
    std::unique_ptr<Ui::CChooseTypeDlg> m_ui;
};
