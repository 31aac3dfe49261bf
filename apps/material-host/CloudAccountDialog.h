#pragma once

#include <QDialog>

class CloudAccount;
class QDialogButtonBox;
class QLabel;
class QLineEdit;

/// Asks for the account in which favourites are mirrored, logs in with it, and closes when that succeeded.
class CloudAccountDialog : public QDialog {
    Q_OBJECT

public:
    /// The account is borrowed and changed when the user confirms.
    CloudAccountDialog(CloudAccount& account, QWidget* parent);

private slots:
    void signIn();
    void signOut();

private:
    void makeButtons();
    void showHint();
    void logIn();
    void showAnswer(const QString& reason);

    CloudAccount& m_account;
    QLineEdit* m_address;
    QLineEdit* m_user;
    QLineEdit* m_password;
    QLabel* m_hint;
    QDialogButtonBox* m_buttons;
};
