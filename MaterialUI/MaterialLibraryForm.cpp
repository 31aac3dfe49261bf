#include "MaterialLibraryForm.h"

#include "AppearanceHeading.h"

#include <AppearanceDynamicEditor.h>
#include <AppearanceLibraryBrowserCtrl.h>
#include <AppearancePreviewerCtrl.h>
#include <PlainTip.h>

#include <QDialog>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int EditorHeight = 320;  // that can be seen at least; what is more is scrolled to

}  // namespace

void CMaterialLibraryForm::Build(QDialog& dialog, kiv::CMaterialLibrary& library, AppearanceLibraryProvider* provider,
                                 bool cloudEnabled)
{
    m_dialog = &dialog;
    kiv::CAppearanceLibraryManager& manager = *library.GetMaterialManager();
    searchLine = new QLineEdit(&dialog);
    projectBrowser = new CAppearanceLibraryBrowserCtrl(manager, &dialog, provider, cloudEnabled);
    systemBrowser = new CAppearanceLibraryBrowserCtrl(manager, &dialog, nullptr, cloudEnabled);
    previewer = new CAppearancePreviewerCtrl(manager, &dialog);
    heading = new CAppearanceHeading(manager, &dialog);
    editor = new CAppearanceDynamicEditor(manager, library, &dialog);
    auto* columns = new QHBoxLayout;
    columns->setSpacing(3);
    columns->addWidget(buildBrowsers(), 1);
    columns->addWidget(makeLine(true, "MiddleLine"));
    columns->addWidget(buildRightColumn());
    auto* layout = new QVBoxLayout(&dialog);
    layout->setContentsMargins(3, 3, 3, 3);
    layout->setSpacing(0);
    layout->addLayout(columns, 1);
    layout->addWidget(makeLine(false, "ApplyLine"));
    layout->addLayout(buildBottomBar(cloudEnabled));
    projectBrowser->ShowCollectAndSynchBtn(false);
    systemBrowser->ShowCollectAndSynchBtn(cloudEnabled);
    synchronizeButton = systemBrowser->findChild<QToolButton*>(QStringLiteral("synchronizeButton"));
    synchronizeButton->setEnabled(false);  // until there is an account
}

QWidget* CMaterialLibraryForm::buildBrowsers()
{
    searchLine->setObjectName(QStringLiteral("LineSearch"));
    searchLine->setPlaceholderText(tr("搜索构件..."));
    searchLine->setClearButtonEnabled(true);
    QObject::connect(new QShortcut(QKeySequence::Find, m_dialog), &QShortcut::activated, searchLine, [this] {
        searchLine->setFocus(Qt::ShortcutFocusReason);
        searchLine->selectAll();
    });
    projectBrowser->setObjectName(QStringLiteral("ProjectLibrary"));
    systemBrowser->setObjectName(QStringLiteral("SystemLibrary"));
    for (CAppearanceLibraryBrowserCtrl* browser : {projectBrowser, systemBrowser})
        browser->ShowTreeWidget(true);
    splitter = new QSplitter(Qt::Vertical, m_dialog);
    splitter->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(searchLine);
    splitter->addWidget(projectBrowser);
    splitter->addWidget(systemBrowser);
    splitter->setStretchFactor(1, 1);
    splitter->setStretchFactor(2, 1);
    return splitter;
}

QWidget* CMaterialLibraryForm::buildRightColumn()
{
    auto* column = new QWidget(m_dialog);
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(3, 3, 3, 3);
    layout->setSpacing(0);
    layout->addWidget(previewer);
    layout->addWidget(heading);
    layout->addWidget(buildEditorArea(), 1);
    column->setFixedWidth(column->sizeHint().width());  // long names wrap instead
    return column;
}

// A type with many properties has more controls than the screen of a portable computer has room.
QWidget* CMaterialLibraryForm::buildEditorArea()
{
    auto* controls = new QWidget(m_dialog);
    auto* controlsLayout = new QVBoxLayout(controls);
    controlsLayout->setSpacing(0);
    controlsLayout->setContentsMargins(0, 0, 0, 0);
    controlsLayout->addWidget(editor);
    editorArea = new QScrollArea(m_dialog);
    editorArea->setFrameShape(QFrame::NoFrame);
    editorArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    editorArea->setWidgetResizable(true);
    editorArea->setMinimumHeight(EditorHeight);
    editorArea->setFocusPolicy(Qt::NoFocus);
    editorArea->setWidget(controls);
    editorArea->setFixedWidth(editor->width() + editorArea->verticalScrollBar()->sizeHint().width());
    return editorArea;
}

QBoxLayout* CMaterialLibraryForm::buildBottomBar(bool cloudEnabled)
{
    applyButton = new QPushButton(tr("确定"), m_dialog);
    applyButton->setObjectName(QStringLiteral("pushButtonOk"));
    applyButton->setFixedWidth(80);
    applyButton->setDefault(true);
    accountLabel = new QLabel(m_dialog);
    accountLabel->setObjectName(QStringLiteral("LabelAccount"));
    synchronizationLabel = new QLabel(m_dialog);
    synchronizationLabel->setObjectName(QStringLiteral("LabelSynchronization"));
    noticeLabel = new QLabel(m_dialog);
    noticeLabel->setObjectName(QStringLiteral("LabelNotice"));
    noticeLabel->setTextFormat(Qt::PlainText);
    noticeLabel->hide();
    auto* bar = new QHBoxLayout;
    bar->setContentsMargins(3, 3, 3, 3);
    bar->setSpacing(6);
    bar->addWidget(noticeLabel);
    bar->addSpacerItem(new QSpacerItem(40, 20, QSizePolicy::Expanding, QSizePolicy::Minimum));
    bar->addWidget(applyButton);
    for (QLabel* label : {accountLabel, synchronizationLabel}) {
        label->setVisible(cloudEnabled);
        bar->addWidget(label);
    }
    return bar;
}

void CMaterialLibraryForm::ShowNotice(const QString& text, const QString& details) const
{
    noticeLabel->setText(text);
    noticeLabel->setToolTip(PlainTip(details));
    noticeLabel->setVisible(!text.isEmpty());
}

QFrame* CMaterialLibraryForm::makeLine(bool isVertical, const char* name)
{
    auto* line = new QFrame(m_dialog);
    line->setObjectName(name);
    line->setFrameShape(isVertical ? QFrame::VLine : QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}
