#include "Tour.h"

#include "TourChecks.h"
#include "TourScreen.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>

#include <iostream>

int Tour::run(const std::vector<TourStep>& steps)
{
    if (!QDir().mkpath(m_folder)) {
        std::cerr << "tour: the folder \"" << qPrintable(m_folder) << "\" cannot be made\n";
        return 1;
    }
    for (const TourStep& step : steps)
        if (!perform(step))
            return 1;
    std::cout << "tour: all " << steps.size() << " steps did what they say" << std::endl;
    return 0;
}

bool Tour::perform(const TourStep& step)
{
    ++m_number;
    m_step = step.name;
    QElapsedTimer timer;
    timer.start();
    try {
        step.act();
        picture();
    } catch (const TourFailure& failure) {
        std::cerr << "tour: step " << qPrintable(title()) << " failed: " << failure.what() << std::endl;
        TourScreen::save(m_folder + "/" + title() + "-failed.png");
        return false;
    }
    std::cout << "tour: " << qPrintable(title()) << ": ok, " << timer.elapsed() << " ms" << std::endl;
    return true;
}

void Tour::picture(const QString& detail)
{
    QApplication::processEvents();
    const QString path = m_folder + "/" + title() + (detail.isEmpty() ? detail : "-" + detail) + ".png";
    TourChecks::expect(TourScreen::save(path), "the picture " + path + " can be written");
}

QString Tour::title() const
{
    return QString("%1-%2").arg(m_number, 2, 10, QLatin1Char('0')).arg(m_step);
}
