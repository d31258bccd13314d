// SPDX-License-Identifier: MIT
#include "WindowFixture.h"

#include "Services/FileDiscoveryService.h"
#include "Services/UninstallService.h"
#include "ViewModels/MainViewModel.h"

#include <QBuffer>
#include <QFutureInterface>
#include <QImage>
#include <QLinearGradient>
#include <QMutex>
#include <QPainter>
#include <QPainterPath>
#include <QtEndian>

// Returns the items set for the app's identifier, each with a fresh id.
class ScriptedDiscovery : public FileDiscoveryService
{
public:
    QList<FileItem> discoverFiles(const AppInfo &app) const override
    {
        QMutexLocker lock(&m_mutex);
        QList<FileItem> items = m_items.value(app.bundleIdentifier);
        for (FileItem &item : items)
            item.id = QUuid::createUuid();
        return items;
    }
    void setItems(const QString &identifier, const QList<FileItem> &items)
    {
        QMutexLocker lock(&m_mutex);
        m_items.insert(identifier, items);
    }

private:
    mutable QMutex m_mutex;
    QHash<QString, QList<FileItem>> m_items;
};

// Marks the sessions processing and finishes them when told, with the configured failures.
class ScriptedUninstall : public UninstallService
{
public:
    QFuture<void> uninstall(const QList<QSharedPointer<UninstallSession>> &sessions) override
    {
        m_pending = sessions;
        for (const auto &session : sessions) {
            session->setStatus(UninstallStatus::processing());
            session->addLog(QStringLiteral("Starting uninstall of ") + session->displayName(),
                            true);
        }
        m_promise = QFutureInterface<void>();
        m_promise.reportStarted();
        return m_promise.future();
    }
    void finish()
    {
        for (const auto &session : std::as_const(m_pending))
            finish(*session);
        m_pending.clear();
        m_promise.reportFinished();
    }
    [[nodiscard]] bool isPending() const { return !m_pending.isEmpty(); }
    QHash<QString, int> failures;

private:
    void finish(UninstallSession &session)
    {
        int removed = 0;
        int failed = 0;
        qint64 bytes = 0;
        int toFail = failures.value(session.bundleIdentifier());
        for (const FileItem &item : session.discoveredFiles()) {
            if (!item.isSelected || item.isProtected)
                continue;
            if (toFail > 0) {
                --toFail, ++failed;
                session.addLog(QStringLiteral("Failed to remove: ") + item.displayPath(), false);
                continue;
            }
            ++removed, bytes += item.size;
            session.addLog(QStringLiteral("Moved to Trash: ") + item.displayPath(), true);
        }
        session.setRemovedCount(removed);
        session.setFailedCount(failed);
        session.setRemovedBytes(bytes);
        session.setStatus(UninstallStatus::completed());
    }

    QList<QSharedPointer<UninstallSession>> m_pending;
    QFutureInterface<void> m_promise;
};

namespace {
// A rounded-square app icon in the colour, with a soft highlight, as an icns with one PNG.
QByteArray iconFile(const QColor &color)
{
    QImage image(256, 256, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient fill(0, 0, 256, 256);
    fill.setColorAt(0, color.lighter(135));
    fill.setColorAt(1, color.darker(115));
    QPainterPath shape;
    shape.addRoundedRect(QRectF(12, 12, 232, 232), 52, 52);
    painter.fillPath(shape, fill);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 255, 255, 215));
    painter.drawEllipse(QRectF(78, 78, 100, 100));
    painter.setBrush(color.darker(105));
    painter.drawEllipse(QRectF(106, 106, 44, 44));
    painter.end();
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    const auto bigEndian = [](quint32 value) {
        QByteArray bytes(4, '\0');
        qToBigEndian(value, bytes.data());
        return bytes;
    };
    const QByteArray entry = QByteArray("ic08") + bigEndian(quint32(8 + png.size())) + png;
    return QByteArray("icns") + bigEndian(quint32(8 + entry.size())) + entry;
}

FileCategory categoryNamed(const QString &name)
{
    for (const FileCategory category : allFileCategories()) {
        if (caseName(category) == name)
            return category;
    }
    return FileCategory::other;
}
} // namespace

WindowFixture::WindowFixture(QObject *parent)
    : QObject(parent), m_mac(std::make_unique<FakeMac>(m_dir.path())),
      m_discovery(std::make_shared<ScriptedDiscovery>()),
      m_uninstall(std::make_shared<ScriptedUninstall>())
{
    m_mac->activate();
}

WindowFixture::~WindowFixture() = default;

QUrl WindowFixture::addApp(const QString &macPath, const QString &identifier,
                           const QString &version, const QString &color)
{
    FakeMac::App app;
    app.path = macPath;
    app.identifier = identifier;
    if (!version.isEmpty())
        app.version = version;
    if (!color.isEmpty()) {
        app.info.insert(QStringLiteral("CFBundleIconFile"), QStringLiteral("AppIcon"));
        m_mac->addTextFile(macPath + QStringLiteral("/Contents/Resources/AppIcon.icns"),
                           iconFile(QColor(color)));
    }
    return QUrl::fromLocalFile(m_mac->addApp(app));
}

void WindowFixture::setItems(const QString &identifier, const QVariantList &items)
{
    QList<FileItem> list;
    for (const QVariant &value : items) {
        const QVariantMap map = value.toMap();
        const QString macPath = map.value(QStringLiteral("path")).toString();
        FileItem item;
        item.path = m_mac->path(macPath);
        item.category = categoryNamed(map.value(QStringLiteral("category")).toString());
        item.size = map.value(QStringLiteral("size")).toLongLong();
        item.isSelected = map.value(QStringLiteral("selected"), true).toBool();
        item.confidence = map.value(QStringLiteral("confidence"), 1.0).toDouble();
        item.isProtected = map.value(QStringLiteral("protected"), false).toBool();
        if (map.contains(QStringLiteral("note")))
            item.note = map.value(QStringLiteral("note")).toString();
        if (!QFileInfo::exists(item.path))
            m_mac->addFile(macPath, std::min<qint64>(item.size, 4096));
        list.append(item);
    }
    m_discovery->setItems(identifier, list);
}

void WindowFixture::setFailures(const QString &identifier, int failures)
{
    m_uninstall->failures.insert(identifier, failures);
}

QUrl WindowFixture::documentUrl()
{
    return QUrl::fromLocalFile(
        m_mac->addTextFile(QStringLiteral("~/Documents/Notes.txt"), "notes"));
}

MainViewModel *WindowFixture::viewModel()
{
    if (!m_viewModel) {
        MainViewModel::Dependencies dependencies;
        dependencies.discovery = m_discovery;
        dependencies.uninstall = m_uninstall;
        dependencies.ownBundleIdentifier = [] { return QStringLiteral("app.quenzo.Quenzo"); };
        dependencies.fullDiskAccessProbe = [this] { return m_fullDiskAccess; };
        dependencies.openUrl = [this](const QUrl &url) { m_openedUrls.append(url.toString()); };
        m_viewModel = new MainViewModel(std::move(dependencies), this);
    }
    return m_viewModel;
}

void WindowFixture::finishUninstall()
{
    m_uninstall->finish();
}

bool WindowFixture::uninstallPending() const
{
    return m_uninstall->isPending();
}
