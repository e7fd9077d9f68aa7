#pragma once

#include "store/StoreTest.h"

#include <QDir>
#include <QFile>
#include <QSettings>

/** Projects and their text form, as the tests of it need them. */
namespace ProjectTexts {

using Store = StoreTest::NewStore;

inline QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline bool write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(content) == content.size();
}

inline void setLineType(ObjectDataBase &store, quint8 line, int type)
{
    store.setGeneralSetting(QStringLiteral("line%1type").arg(line), QString::number(type));
}

/** The entries of a text, read by QSettings alone. */
class Text
{
public:
    explicit Text(const QString &path) : m_settings(path, QSettings::IniFormat) { }

    QStringList groups() const { return m_settings.childGroups(); }
    QStringList keys() const { return m_settings.allKeys(); }
    QVariant value(const QString &key) const { return m_settings.value(key); }
    bool contains(const QString &key) const { return m_settings.contains(key); }
    QStringList childGroups(const QString &group)
    {
        m_settings.beginGroup(group);
        QStringList children = m_settings.childGroups();
        m_settings.endGroup();
        return children;
    }
    QStringList childKeys(const QString &group)
    {
        m_settings.beginGroup(group);
        QStringList children = m_settings.childKeys();
        m_settings.endGroup();
        return children;
    }

private:
    QSettings m_settings;
};

inline void fillCanopen(ObjectDataBase &store, quint8 line)
{
    for (quint16 index = 0x2000; index < 0x2010; ++index) {
        ObjectDataBase::INDEX_DATA_T object =
            StoreTest::sampleIndex(QStringLiteral("Object \"%1\"").arg(index));
        object.metadata = {{QStringLiteral("unit"), QStringLiteral("µV")},
                           {QStringLiteral("empty"), QString()}};
        store.addIndex(line, index, object);
        for (quint8 sub = 0; sub < 12; ++sub) {
            ObjectDataBase::SUBINDEX_DATA_T data =
                StoreTest::sampleSub(QStringLiteral("Sub %1, it's;=#").arg(sub));
            data.description = QStringLiteral("two\nlines");
            data.nvstorage = sub % 2;
            data.defaultineds = true;
            if (sub == 3)
                data.metadata = {{QStringLiteral("key"), QStringLiteral("a, b")}};
            store.addSubIndex(line, index, sub, data);
        }
    }
}

inline void fillJ1939(ObjectDataBase &store, quint8 line)
{
    for (quint32 number = 61440; number < 61445; ++number) {
        const quint8 direction = number % 2 ? ObjectDataBase::Receive : ObjectDataBase::Transmit;
        store.addPGN(line, number, StoreTest::samplePgn(direction, QStringLiteral("PGN %1").arg(number)));
        for (quint32 spn = 1; spn < 4; ++spn) {
            ObjectDataBase::SPN data = StoreTest::sampleSpn(int(spn), QStringLiteral("SPN %1").arg(spn));
            data.bitposition = int(spn - 1) * 16;
            data.varname = QStringLiteral("v%1").arg(spn);
            store.addSPN(line, number, direction, spn, data);
        }
    }
    store.setJ1939Setting(QStringLiteral("identitynumber"), QStringLiteral("0x123,7"));
}

/** Line 0 CANopen, line 1 J1939, line 2 both. */
inline void fillMixedProject(ObjectDataBase &store)
{
    for (const quint8 line : {1, 2}) {
        ObjectDataBase::NODE_DATA_T node;
        node.name = QStringLiteral("Node %1").arg(line);
        node.multilinedata = 3;
        node.lssslave = 1;
        store.addNode(line, node);
    }
    setLineType(store, 0, 1);
    setLineType(store, 1, 2);
    setLineType(store, 2, 5);
    fillCanopen(store, 0);
    fillCanopen(store, 2);
    fillJ1939(store, 1);
    fillJ1939(store, 2);
    store.setUDSServiceActive(0, UDS::SID(16), false);
    store.setUDSServiceUserLevels(1, UDS::SID(17), QStringLiteral("3,4"));
    store.setDescriptionLine(1);
    store.setDescriptionSetting(QStringLiteral("VendorName"), QStringLiteral("Müller & \"Söhne\""));
    store.setGeneralSetting(QStringLiteral("co_node_id"), QStringLiteral("1,2,3"));
    store.setMiscSetting(QStringLiteral("postgencmd"), QStringLiteral("C:\\tools\\x.exe"));
}

/** Saves a small project of both protocols and gives its text. */
inline QByteArray makeSmallText(const QString &path)
{
    Store store;
    setLineType(store, 0, 5);
    store.addIndex(0, 0x2000, StoreTest::sampleIndex(QStringLiteral("Speed")));
    store.addSubIndex(0, 0x2000, 1, StoreTest::sampleSub());
    store.setGeneralSetting(QStringLiteral("co_node_id"), QStringLiteral("5"));
    fillJ1939(store, 0);
    if (!store.saveProject(path))
        qFatal("the text cannot be saved: %s", qPrintable(store.lastError()));
    return read(path);
}

} // namespace ProjectTexts
