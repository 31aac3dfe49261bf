#pragma once

#include <QString>

#include <functional>
#include <vector>

/// One step of a tour: what it shows, in a word or two fit for a file name, and what is done and checked. It throws
/// TourFailure when something did not happen.
struct TourStep {
    QString name;
    std::function<void()> act;
};

/// Runs steps one after the other with a line on the standard output and a picture of the screen for each. Stops at the
/// first that fails.
class Tour {
public:
    explicit Tour(QString folder) : m_folder(std::move(folder)) {}

    /// 0, or 1 when a step failed.
    int run(const std::vector<TourStep>& steps);
    /// A further picture within the running step, while a dialog is open that the step closes.
    void picture(const QString& detail = {});

private:
    bool perform(const TourStep& step);
    QString title() const;

    QString m_folder;
    QString m_step;
    int m_number = 0;
};
