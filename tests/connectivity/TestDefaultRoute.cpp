#include <DefaultRoute.h>
#include <MaterialTest.h>
#include <TestFiles.h>

#include <QTemporaryDir>

namespace {

const QByteArray s_head = "Iface\tDestination\tGateway\tFlags\tRefCnt\tUse\tMetric\tMask\tMTU\tWindow\tIRTT\n";
const QByteArray s_default = s_head + "eth0\t00000000\t010200C0\t0003\t0\t0\t0\t00000000\t0\t0\t0  \n";
const QByteArray s_local = s_head + "eth0\t000200C0\t00000000\t0001\t0\t0\t0\t00FFFFFF\t0\t0\t0  \n";
const QByteArray s_any(32, '0');

// What the kernel always has for IPv6: everything that nothing else takes is refused.
const QByteArray s_refusal =
    s_any + " 00 " + s_any + " 00 " + s_any + " ffffffff 00000001 00000000 00200200       lo\n";

QByteArray ipv6(const char* length, const char* sourceLength, const char* flags, const char* interface)
{
    return s_any + ' ' + length + ' ' + s_any + ' ' + sourceLength + " fe80" + s_any.mid(4) +
           " 00000400 00000002 00000000 " + flags + "     " + interface + '\n' + s_refusal;
}

}  // namespace

class TestDefaultRoute : public MaterialTest {
    Q_OBJECT

private slots:
    void aRouteCounts_data()
    {
        const auto row = testColumns<QByteArray, QByteArray, bool>("ipv4", "ipv6", "online");
        row("IPv4", s_default, s_refusal, true);
        row("IPv4 behind others", s_local + s_default, s_refusal, true);
        row("IPv6 only", s_head, ipv6("00", "00", "00000003", "eth0"), true);
        row("tunnel that does not know its state", s_head, ipv6("00", "00", "00000001", "tun0"), true);
        row("local network only", s_local, ipv6("40", "00", "00000001", "eth0"), false);
        row("route down", QByteArray(s_default).replace("0003", "0002"), ipv6("00", "00", "00000002", "eth0"), false);
        row("route that refuses", QByteArray(s_default).replace("0003", "0203"), ipv6("00", "00", "00000201", "eth0"),
            false);
        row("half of all addresses", s_head + "eth0\t00000000\t010200C0\t0003\t0\t0\t0\t00000080\t0\t0\t0\n",
            ipv6("01", "00", "00000003", "eth0"), false);
        row("for one source", s_head, ipv6("00", "40", "00000003", "eth0"), false);
        row("loopback", QByteArray(s_default).replace("eth0", "lo"), ipv6("00", "00", "00000003", "lo"), false);
        row("cable pulled", QByteArray(s_default).replace("eth0", "eth1"), ipv6("00", "00", "00000003", "eth1"), false);
        row("switched off", QByteArray(s_default).replace("eth0", "eth2"), ipv6("00", "00", "00000003", "eth2"), false);
        row("interface gone", QByteArray(s_default).replace("eth0", "eth9"), ipv6("00", "00", "00000003", "eth9"),
            false);
        row("interface that climbs", QByteArray(s_default).replace("eth0", "../net/eth0"), "", false);
        row("cut in the line", s_default.left(s_default.indexOf("0003")), ipv6("00", "00", "", "").left(90), false);
        row("garbage", QByteArray("\0\xff\t00000000\n\n\t\t", 13) + QByteArray(70000, 'x'), "\n \n0 0 0", false);
        row("no files", {}, {}, false);
    }

    void aRouteCounts()
    {
        QFETCH(QByteArray, ipv4);
        QFETCH(QByteArray, ipv6);
        QFETCH(bool, online);
        QTemporaryDir folder;
        const QString root = folder.path() + '/';
        const auto interface = [&](const QString& name, const char* flags, const char* state) {
            writeFile(root + "sys/class/net/" + name + "/flags", flags);
            writeFile(root + "sys/class/net/" + name + "/operstate", state);
        };
        interface("lo", "0x9\n", "unknown\n");
        interface("eth0", "0x1003\n", "up\n");
        interface("eth1", "0x1003\n", "down\n");
        interface("eth2", "0x1002\n", "down\n");
        interface("tun0", "0x10d1\n", "unknown\n");
        if (!ipv4.isNull())
            writeFile(root + "proc/net/route", ipv4);
        if (!ipv6.isNull())
            writeFile(root + "proc/net/ipv6_route", ipv6);
        QCOMPARE(kiv::system::HasDefaultRoute(root.toStdString()), online);
    }
};

MATERIAL_TEST_MAIN(TestDefaultRoute)

#include "TestDefaultRoute.moc"
