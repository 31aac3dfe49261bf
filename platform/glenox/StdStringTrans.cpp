#include <glenox/StdStringTrans.h>

#include <QString>

namespace kiv {

std::wstring GStdStringTrans::StringToWString(const std::string& narrow)
{
    return QString::fromLocal8Bit(narrow.data(), int(narrow.size())).toStdWString();
}

std::string GStdStringTrans::WStringToString(const std::wstring& wide)
{
    return QString::fromStdWString(wide).toLocal8Bit().toStdString();
}

}  // namespace kiv
