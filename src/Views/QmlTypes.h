// SPDX-License-Identifier: MIT
#pragma once

#include "ViewModels/AppPickerModel.h"
#include "ViewModels/HistoryListModel.h"
#include "ViewModels/LogListModel.h"
#include "ViewModels/MainViewModel.h"
#include "ViewModels/PutBackPresenter.h"
#include "ViewModels/RestoreReportModel.h"
#include "ViewModels/ResultsListModel.h"
#include "ViewModels/ResultsPresenter.h"
#include "ViewModels/SessionListModel.h"
#include "ViewModels/SummaryListModel.h"

#include <QtQml/qqml.h>

// The controller and the presentation classes as the QML module "Quenzo" sees them. The
// classes live in the view-model library, which knows nothing of QML.

struct MainViewModelForeign
{
    Q_GADGET
    QML_FOREIGN(MainViewModel)
    QML_NAMED_ELEMENT(MainViewModel)
    QML_UNCREATABLE("Made by the application entry")
};

struct UninstallSessionForeign
{
    Q_GADGET
    QML_FOREIGN(UninstallSession)
    QML_NAMED_ELEMENT(UninstallSession)
    QML_UNCREATABLE("Owned by MainViewModel")
};

struct ResultsPresenterForeign
{
    Q_GADGET
    QML_FOREIGN(ResultsPresenter)
    QML_NAMED_ELEMENT(ResultsPresenter)
};

struct ResultsListModelForeign
{
    Q_GADGET
    QML_FOREIGN(ResultsListModel)
    QML_NAMED_ELEMENT(ResultsListModel)
    QML_UNCREATABLE("Owned by ResultsPresenter")
};

struct LogListModelForeign
{
    Q_GADGET
    QML_FOREIGN(LogListModel)
    QML_NAMED_ELEMENT(LogListModel)
    QML_UNCREATABLE("Owned by ResultsPresenter")
};

struct SummaryListModelForeign
{
    Q_GADGET
    QML_FOREIGN(SummaryListModel)
    QML_NAMED_ELEMENT(SummaryListModel)
    QML_UNCREATABLE("Owned by ResultsPresenter")
};

struct SessionListModelForeign
{
    Q_GADGET
    QML_FOREIGN(SessionListModel)
    QML_NAMED_ELEMENT(SessionListModel)
    QML_UNCREATABLE("Owned by MainViewModel")
};

struct AppPickerModelForeign
{
    Q_GADGET
    QML_FOREIGN(AppPickerModel)
    QML_NAMED_ELEMENT(AppPickerModel)
    QML_UNCREATABLE("Owned by MainViewModel")
};

struct PutBackPresenterForeign
{
    Q_GADGET
    QML_FOREIGN(PutBackPresenter)
    QML_NAMED_ELEMENT(PutBackPresenter)
    QML_UNCREATABLE("Owned by MainViewModel")
};

struct HistoryListModelForeign
{
    Q_GADGET
    QML_FOREIGN(HistoryListModel)
    QML_NAMED_ELEMENT(HistoryListModel)
    QML_UNCREATABLE("Owned by PutBackPresenter")
};

struct RestoreReportModelForeign
{
    Q_GADGET
    QML_FOREIGN(RestoreReportModel)
    QML_NAMED_ELEMENT(RestoreReportModel)
    QML_UNCREATABLE("Owned by PutBackPresenter")
};
