// What a person waits for in the editor: the panel of another appearance, and each change of a number.
#include "ProjectLibrary.h"
#include "Ratios.h"

#include <AppearanceDynamicEditor.h>
#include <DynamicWidget.h>
#include <EditStack.h>
#include <MaterialLibraryWidget.h>
#include <SpinBoxCtrl.h>

#include <QApplication>
#include <QKeyEvent>
#include <QScrollArea>
#include <QTextCodec>

#include <algorithm>
#include <vector>

namespace {

constexpr double TwoFramesMs = 2000.0 / 60;
constexpr double ChangeMs = 1000.0 / 30;

kiv::CMaterialLibrary& materialLibrary()
{
    return ProjectLibrary::Instance().Library();
}

kiv::CAppearanceLibraryManager& manager()
{
    return ProjectLibrary::Instance().Manager();
}

std::size_t controlsOf(const std::vector<kiv::CAppearanceUIElement>& elements)
{
    std::size_t count = elements.size();
    for (const kiv::CAppearanceUIElement& element : elements)
        count += controlsOf(element.GetStackPanels());
    return count;
}

/// A delivered appearance of the type with the most controls, textured if there is one.
kiv::CAppearanceInstancePtr richest()
{
    const auto weight = [](const kiv::CAppearanceInstancePtr& appearance) {
        return std::pair(controlsOf(appearance->GetTemplate()->GetUi()), appearance->GetUseDiffuseTexture());
    };
    const auto& library = *manager().GetSystemLibrary();
    return std::max_element(library.begin(), library.end(),
                            [&](const auto& a, const auto& b) { return weight(a.second) < weight(b.second); })
        ->second;
}

void finishEvents(QWidget& window)
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    window.repaint();
}

void showPanel(benchmark::State& state)
{
    QScrollArea area;
    auto* editor = new CAppearanceDynamicEditor(manager(), materialLibrary(), nullptr);
    area.setWidget(editor);
    area.setWidgetResizable(true);
    area.resize(320, 700);
    area.show();
    const kiv::CAppearanceInstancePtr shown[] = {richest(), richest()->Clone("other")};
    int turn = 0;
    for ([[maybe_unused]] auto _ : state) {
        editor->SetAppearance(shown[++turn % 2]);
        finishEvents(area);
    }
}

void pressKey(QWidget& control, Qt::Key key)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&control, &event);
    }
}

void change(benchmark::State& state, int appearances)
{
    ProjectLibrary::Instance().Fill(appearances);
    const auto edited = materialLibrary().CopyMaterial(richest(), L"edited");
    CMaterialLibraryWidget dialog(&materialLibrary(), false, nullptr, false, ProjectLibrary::Name, false);
    dialog.show();
    dialog.SetCurrentMaterial(QString::fromStdString(edited->GetId()).toStdWString());
    for (int i = 0; i < 10; ++i)  // the preview is there after some turns of the event loop
        QCoreApplication::processEvents(QEventLoop::AllEvents, 100);
    finishEvents(dialog);
    auto* number = dialog.findChild<CSpinBoxCtrl*>(QStringLiteral("roughness"));
    benchmark::IterationCount edits = 0;
    QObject::connect(&dialog, &CMaterialLibraryWidget::AppearanceEdited, [&] { ++edits; });
    bool up = false;
    for ([[maybe_unused]] auto _ : state) {
        pressKey(*number, (up = !up) ? Qt::Key_Up : Qt::Key_Down);
        finishEvents(dialog);
    }
    CEditStack::Instance().Clear();
    if (edits != state.iterations())
        state.SkipWithError("not every key was a change");
}

void record(benchmark::State& state, int appearances)
{
    ProjectLibrary::Instance().Fill(appearances);
    CDynamicWidget widget(manager(), materialLibrary(), nullptr);
    widget.SetAppearance(materialLibrary().CopyMaterial(richest(), L"edited"));
    const kiv::CPropertyValuePtr values[] = {kiv::MakePropertyValue(0.25F), kiv::MakePropertyValue(0.5F)};
    int turn = 0;
    for ([[maybe_unused]] auto _ : state)
        widget.OnPropertyChanged("roughness", values[++turn % 2]);
}

void add(const char* name, std::function<void(benchmark::State&)> function)
{
    benchmark::RegisterBenchmark(name, std::move(function))->Unit(benchmark::kMillisecond);
}

}  // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    add("panel", showPanel);
    add("change10", [](auto& state) { change(state, 10); });
    add("change10000", [](auto& state) { change(state, 10000); });
    add("record10", [](auto& state) { record(state, 10); });
    add("record10000", [](auto& state) { record(state, 10000); });
    return runBenchmarks(argc, argv,
                         {{"selecting an appearance to its painted panel / two frames", "panel", "", 1, TwoFramesMs},
                          {"changing a number in the dialog / a thirtieth of a second", "change10", "", 1, ChangeMs},
                          {"the same with 10,000 in the project", "change10000", "", 1, ChangeMs},
                          {"record and change with 10,000 in the project / with 10", "record10000", "record10", 1.3}});
}
