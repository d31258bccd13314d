// SPDX-License-Identifier: MIT
// "All" and "None" on one app with 10,000 found items, as the window does them: the selection
// change, the list model's report and the results' recomputation (totals, the administrator
// check, the confirmation text). Prints milliseconds per step; the budget is 200 ms.
#include "Discovery/FileDiscoveryService.h"
#include "ViewModels/MainViewModel.h"
#include "ViewModels/ResultsPresenter.h"
#include "fakemac/FakeMac.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

namespace {
constexpr int kItems = 10000;

class ManyItems : public FileDiscoveryService
{
public:
    ManyItems(const SystemLayout &layout, QString folder)
        : FileDiscoveryService(layout), m_folder(std::move(folder))
    {}
    QList<FileItem> discoverFiles(const AppInfo &) const override
    {
        QList<FileItem> items;
        items.reserve(kItems);
        for (int i = 0; i < kItems; ++i) {
            FileItem item;
            item.path = m_folder + QStringLiteral("/item-") + QString::number(i);
            item.category = FileCategory(i % 15);
            item.size = 1000 + i;
            items.append(item);
        }
        return items;
    }

private:
    QString m_folder;
};
} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    FakeMac mac(dir.path());
    FakeMac::App bundle;
    bundle.path = QStringLiteral("/Applications/Big.app");
    bundle.identifier = QStringLiteral("com.example.Big");
    const QString path = mac.addApp(bundle);

    MainViewModel::Dependencies dependencies;
    dependencies.discovery =
        std::make_shared<ManyItems>(mac.layout(), mac.path(QStringLiteral("~/Library")));
    dependencies.fullDiskAccessProbe = [] { return true; };
    MainViewModel viewModel(mac.layout(), std::move(dependencies));
    ResultsPresenter presenter;
    presenter.setViewModel(&viewModel);
    viewModel.handleDroppedFiles({QUrl::fromLocalFile(path)});
    while (viewModel.sessions().isEmpty() || viewModel.isScanning())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    QCoreApplication::processEvents();

    ResultsListModel *model = presenter.listModel();
    qInfo("rows: %d", model->rowCount());
    for (const bool selected : {false, true, false, true}) {
        QElapsedTimer timer;
        timer.start();
        viewModel.sessions().constFirst()->setAllSelected(selected);
        model->flush();
        presenter.refresh();
        const QString message = presenter.confirmationMessage();
        qInfo("%s: %lld ms (%s)", selected ? "All " : "None", timer.elapsed(),
              qPrintable(presenter.footerTitle()));
        Q_UNUSED(message)
    }
    return 0;
}
