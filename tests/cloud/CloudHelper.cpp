// Another process with a session of its own: cloud_helper WHAT USER PASSWORD ADDRESS PRODUCT FILE CERTIFICATES
//   login    logs in and ends
//   upload   begins an upload, waits for a line of its input and ends in the middle of it
//   exit     the same by exit(), which leaves the application as it is
// Says how each request ended.
#include "CloudRequest.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <string>

namespace {

void say(const char* what, const QString& told)
{
    std::printf("%s: %s\n", what, qPrintable(told));
}

std::function<void()> s_sayHowTheyEnded;

void beginRequests(const QString& path)
{
    s_sayHowTheyEnded = [upload = CloudRequests::Upload({}, path), listing = CloudRequests::Children()] {
        say("upload", upload.Wait().Told());
        say("children", listing.Wait().Told());
        say("afterwards", CloudRequests::Children().Wait().Told());
    };
    std::string line;
    std::getline(std::cin, line);
}

}  // namespace

int main(int argc, char** argv)
{
    auto* application = new QCoreApplication(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() != 8)
        return 2;
    trustOnly(words[7].toUtf8());
    // Before the service is used: what is made first is ended last.
    std::atexit([] {
        if (s_sayHowTheyEnded)
            s_sayHowTheyEnded();
    });
    say("login", CloudRequests::Login({words[2], words[3], words[4], words[5]}).Wait().Told());
    if (words[1] != QLatin1String("login"))
        beginRequests(words[6]);
    if (words[1] != QLatin1String("exit"))
        delete application;
    return 0;
}
