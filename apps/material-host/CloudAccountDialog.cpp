#include "CloudAccountDialog.h"

#include "CloudAccount.h"
#include "SignIn.h"

#include <nuvs/NUVSCloudService.h>

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QUrl>

CloudAccountDialog::CloudAccountDialog(CloudAccount& account, QWidget* parent)
    : QDialog(parent), m_account(account), m_address(new QLineEdit(account.address(), this)),
      m_user(new QLineEdit(account.user(), this)), m_password(new QLineEdit(this)), m_hint(new QLabel(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(tr("Cloud account"));
    setObjectName("cloudAccount");
    m_address->setObjectName("cloudAddress");
    m_address->setPlaceholderText("https://");
    m_address->setMinimumWidth(320);
    m_user->setObjectName("cloudUser");
    m_password->setObjectName("cloudPassword");
    m_password->setEchoMode(QLineEdit::Password);
    m_hint->setObjectName("cloudHint");
    m_hint->setWordWrap(true);
    m_hint->setMinimumHeight(3 * fontMetrics().lineSpacing());  // of the longest hint
    m_hint->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto* layout = new QFormLayout(this);
    layout->addRow(tr("WebDAV server"), m_address);
    layout->addRow(tr("User"), m_user);
    layout->addRow(tr("Password"), m_password);
    layout->addRow(m_hint);
    layout->addRow(m_buttons);
    makeButtons();
    connect(m_address, &QLineEdit::textChanged, this, &CloudAccountDialog::showHint);
    showHint();
}

void CloudAccountDialog::makeButtons()
{
    m_buttons->button(QDialogButtonBox::Ok)->setText(tr("Sign in"));
    auto* out = m_buttons->addButton(tr("Sign out"), QDialogButtonBox::DestructiveRole);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &CloudAccountDialog::signIn);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(out, &QPushButton::clicked, this, &CloudAccountDialog::signOut);
}

void CloudAccountDialog::showHint()
{
    const QString address = m_address->text().trimmed();
    const QString scheme = QUrl(address).scheme();
    const bool isServer = scheme.startsWith("http");
    m_password->setEnabled(isServer);
    m_hint->setText(!isServer          ? tr("Without a server the favourites are kept in a folder of this machine.")
                    : scheme == "http" ? tr("This address is not encrypted: others can read what is sent.")
                                       : tr("The password is kept until the program ends."));
}

void CloudAccountDialog::signIn()
{
    const QString address = m_address->text().trimmed();
    const QUrl url(address);
    const bool isKnown = QStringList{"http", "https", "file"}.contains(url.scheme());
    if (!address.isEmpty() && (!isKnown || !url.userInfo().isEmpty())) {
        m_hint->setText(tr("This is not the address of a WebDAV folder, such as https://cloud.example.com/dav/me/."));
        m_address->setFocus();
        return;
    }
    m_account.set(m_user->text().trimmed(), m_password->text(), address);
    logIn();
}

void CloudAccountDialog::logIn()
{
    LoginAccountInfo info;
    if (!m_account.GetLoginInfo(info)) {
        m_hint->setText(tr("Enter the password of the account."));
        m_password->setFocus();
        return;
    }
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(false);
    m_hint->setText(tr("Signing in..."));
    SignIn::begin(info, this, [this](const QString& reason) { showAnswer(reason); });
}

void CloudAccountDialog::showAnswer(const QString& reason)
{
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(true);
    if (reason.isEmpty())
        accept();
    else
        m_hint->setText(reason);
}

void CloudAccountDialog::signOut()
{
    m_account.signOut();
    getNUVSCloudService()->accountService()->logout(new NUVSDefaultLogoutCallback);
    accept();
}
