// SPDX-License-Identifier: MIT
#include "WindowFixture.h"

#include "Discovery/FileDiscoveryService.h"
#include "Platform/PrivilegedShell.h"
#include "Removal/AuthorizationService.h"
#include "Removal/RestoreRun.h"
#include "Removal/UninstallService.h"
#include "ViewModels/MainViewModel.h"
#include "ViewModels/PutBackPresenter.h"
#include "Views/IconShape.h"
#include "Views/QuenzoUi.h"
#include "fakemac/FakeMacRemovalTools.h"
#include "fakemac/FakePrivilegedShell.h"

#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLinearGradient>
#include <QMutex>
#include <QPainter>
#include <QPainterPath>
#include <QQmlEngine>
#include <QSet>
#include <QThreadPool>
#include <QWaitCondition>
#include <QtEndian>

// What the holds and the prompt's answer are now; read by the background threads.
struct FixtureGates
{
    mutable QMutex mutex;
    QWaitCondition changed;
    QSet<QString> heldScans;
    bool holdPrivilegedStep = false;
    FakePrivilegedShell::Behaviour shell = FakePrivilegedShell::Behaviour::runAsCaller;

    template <typename Held> void waitWhile(Held held)
    {
        QMutexLocker lock(&mutex);
        while (held())
            changed.wait(&mutex);
    }
    template <typename Change> void update(Change change)
    {
        QMutexLocker lock(&mutex);
        change();
        changed.wakeAll();
    }
};

// The real discovery, held back for the apps a test keeps in "scanning".
class HeldDiscovery : public FileDiscoveryService
{
public:
    HeldDiscovery(const SystemLayout &layout, std::shared_ptr<FixtureGates> gates)
        : FileDiscoveryService(layout), m_gates(std::move(gates))
    {}

    QList<FileItem> discoverFiles(const AppInfo &app) const override
    {
        m_gates->waitWhile([&] { return m_gates->heldScans.contains(app.bundleIdentifier); });
        return FileDiscoveryService::discoverFiles(app);
    }

private:
    std::shared_ptr<FixtureGates> m_gates;
};

// Stands in for the password prompt: waits while held, then answers as configured.
class PromptlessShell : public PrivilegedShell
{
public:
    explicit PromptlessShell(std::shared_ptr<FixtureGates> gates) : m_gates(std::move(gates)) {}

    Result run(const QString &program, const QStringList &arguments,
               const QByteArray &input) const override
    {
        FakePrivilegedShell::Behaviour behaviour;
        m_gates->waitWhile([&] {
            behaviour = m_gates->shell;
            return m_gates->holdPrivilegedStep;
        });
        return FakePrivilegedShell(behaviour).run(program, arguments, input);
    }

private:
    std::shared_ptr<FixtureGates> m_gates;
};

// The real uninstall, keeping its task so the fixture can outwait it.
class TrackedUninstall : public UninstallService
{
public:
    using UninstallService::UninstallService;

    QFuture<void> uninstall(const QList<QSharedPointer<UninstallSession>> &sessions) override
    {
        m_task = UninstallService::uninstall(sessions);
        return m_task;
    }
    [[nodiscard]] bool isRunning() const { return m_task.isValid() && !m_task.isFinished(); }

private:
    QFuture<void> m_task;
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
} // namespace

WindowFixture::WindowFixture(QObject *parent)
    : QObject(parent), m_mac(std::make_unique<FakeMac>(m_dir.path())),
      m_gates(std::make_shared<FixtureGates>())
{
    FakeMacRemovalTools::install(*m_mac);
    connect(this, &WindowFixture::promptChanged, this, [this] {
        using Behaviour = FakePrivilegedShell::Behaviour;
        m_gates->update([this] {
            m_gates->shell = m_privilegedShell == QLatin1String("cancel") ? Behaviour::cancel
                             : m_privilegedShell == QLatin1String("fail") ? Behaviour::fail
                                                                          : Behaviour::runAsCaller;
            m_gates->holdPrivilegedStep = m_holdPrivilegedStep;
        });
    });
}

void WindowFixture::makeServices()
{
    if (m_uninstall)
        return;
    // Taken once the Mac is laid out: the layout reads its per-user folders when it is made.
    const SystemLayout layout = m_mac->layout();
    m_discovery = std::make_shared<HeldDiscovery>(layout, m_gates);
    m_authorization = std::make_shared<const AuthorizationService>(
        layout, std::make_shared<PromptlessShell>(m_gates), FakePrivilegedShell::helper());
    UninstallService::Dependencies dependencies;
    dependencies.authorization = m_authorization;
    m_uninstall = std::make_shared<TrackedUninstall>(layout, dependencies);
}

WindowFixture::~WindowFixture()
{
    m_gates->update([this] {
        m_gates->heldScans.clear();
        m_gates->holdPrivilegedStep = false;
    });
    // The task moves items on the GUI thread, so the events must keep flowing until it ends.
    while (uninstallRunning())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    QThreadPool::globalInstance()->waitForDone();
}

std::optional<QString> WindowFixture::applyDescription(const QString &file)
{
    QFile input(file);
    if (!input.open(QIODevice::ReadOnly))
        return QStringLiteral("cannot read ") + file;
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(input.readAll(), &parseError);
    if (!document.isObject())
        return file + QStringLiteral(": ") + parseError.errorString();
    return m_mac->apply(document.object());
}

QUrl WindowFixture::addApp(const QString &macPath, const QString &identifier,
                           const QString &version, const QString &color)
{
    FakeMac::App app;
    app.path = macPath;
    app.identifier = identifier;
    if (!version.isEmpty())
        app.version = version;
    app.icon = !color.isEmpty();
    const QUrl url = QUrl::fromLocalFile(m_mac->addApp(app));
    if (app.icon)
        paintIcon(macPath, color);
    return url;
}

void WindowFixture::paintIcon(const QString &appMacPath, const QString &color)
{
    m_mac->addTextFile(appMacPath + QStringLiteral("/Contents/Resources/AppIcon.icns"),
                       iconFile(QColor(color)));
}

QUrl WindowFixture::documentUrl()
{
    return QUrl::fromLocalFile(
        m_mac->addTextFile(QStringLiteral("~/Documents/Notes.txt"), "notes"));
}

QObject *WindowFixture::session(int row)
{
    const auto session = viewModel()->sessions().value(row);
    if (session)
        QQmlEngine::setObjectOwnership(session.get(), QQmlEngine::CppOwnership);
    return session.get();
}

MainViewModel *WindowFixture::viewModel()
{
    if (!m_viewModel) {
        makeServices();
        MainViewModel::Dependencies dependencies;
        dependencies.discovery = m_discovery;
        dependencies.uninstall = m_uninstall;
        dependencies.ownBundleIdentifier = [] { return QStringLiteral("app.quenzo.Quenzo"); };
        dependencies.fullDiskAccessProbe = [this] { return m_fullDiskAccess; };
        dependencies.openUrl = [this](const QUrl &url) { m_openedUrls.append(url.toString()); };
        dependencies.copyText = [this](const QString &text) { m_copiedTexts.append(text); };
        dependencies.shapeIcon = IconShape::rounded;
        m_viewModel = new MainViewModel(m_mac->layout(), std::move(dependencies), this);
    }
    return m_viewModel;
}

PutBackPresenter *WindowFixture::putBackPresenter()
{
    if (!m_putBack) {
        makeServices();
        PutBackPresenter::Dependencies dependencies;
        dependencies.restore = [layout = m_mac->layout(),
                                authorization = m_authorization](const UninstallRecord &record) {
            RestoreRun::Dependencies rights;
            rights.admin = RestoreMover::adminRights(authorization);
            return RestoreRun(layout, rights).run(record);
        };
        m_putBack = new PutBackPresenter(m_mac->layout(), std::move(dependencies), this);
    }
    return m_putBack;
}

void WindowFixture::holdScan(const QString &identifier)
{
    m_gates->update([this, &identifier] { m_gates->heldScans.insert(identifier); });
}

void WindowFixture::releaseScans()
{
    m_gates->update([this] { m_gates->heldScans.clear(); });
}

bool WindowFixture::uninstallRunning() const
{
    return m_uninstall && m_uninstall->isRunning();
}

void WindowFixture::setAppearance(const QString &appearance)
{
    QGuiApplication::setPalette(QuenzoUi::macPalette(appearance == QLatin1String("dark")
                                                         ? QuenzoUi::Appearance::Dark
                                                         : QuenzoUi::Appearance::Light));
}
