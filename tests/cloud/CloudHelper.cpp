// Another process with a session of its own: cloud_helper WHAT USER PASSWORD ADDRESS PRODUCT FILE CERTIFICATES
//   login    logs in and ends
//   upload   begins an upload, waits for a line of its input and ends in the middle of it
// Says how each request ended.
#include "CloudRequest.h"

#include <QCoreApplication>

#include <cstdio>
#include <iostream>
#include <string>

namespace {

void say(const char* what, const QString& told)
{
    std::printf("%s: %s\n", what, qPrintable(told));
}

int uploadAndEnd(QCoreApplication* application, const QString& path)
{
    const auto upload = CloudRequests::Upload({}, path);
    const auto listing = CloudRequests::Children();
    std::string line;
    std::getline(std::cin, line);
    delete application;
    say("upload", upload.Wait().Told());
    say("children", listing.Wait().Told());
    say("afterwards", CloudRequests::Children().Wait().Told());
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    auto* application = new QCoreApplication(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() != 8)
        return 2;
    trustOnly(words[7].toUtf8());
    say("login", CloudRequests::Login({words[2], words[3], words[4], words[5]}).Wait().Told());
    if (words[1] == QLatin1String("upload"))
        return uploadAndEnd(application, words[6]);
    delete application;
    return 0;
}
