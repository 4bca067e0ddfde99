// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/HelpWindow.h"

#include "app/HelpPages.h"
#include "app/ui/HelpBrowser.h"
#include "platform/ui/QtText.h"
#include "platform/ui/ThemedIcon.h"

#include <QAction>
#include <QLineEdit>
#include <QListWidget>
#include <QSettings>
#include <QSplitter>
#include <QTabWidget>
#include <QToolBar>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

namespace {

constexpr QLatin1String kGeometryKey("XWorkspace/HelpGeometry");
constexpr int kNameRole = Qt::UserRole;
constexpr QSize kFirstSize(980, 700);
constexpr int kContentsWidth = 270;

} // namespace

CHelpWindow::CHelpWindow(const CShortcuts& shortcuts, QSettings& configuration)
    : m_configuration(configuration), m_browser(new CHelpBrowser(shortcuts)), m_tabs(new QTabWidget),
      m_tree(new QTreeWidget), m_words(new QLineEdit), m_found(new QListWidget)
{
    setWindowIcon(ApplicationIcon());
    setAttribute(Qt::WA_QuitOnClose, false);
    m_tabs->setDocumentMode(true);
    m_tabs->addTab(CreateContents(), ToQString(Str::HelpContents));
    m_tabs->addTab(CreateSearch(), ToQString(Str::HelpSearch));
    m_browser->setAccessibleName(ToQString(Str::HelpPage));

    auto* parts = new QSplitter;
    parts->addWidget(m_tabs);
    parts->addWidget(m_browser);
    parts->setStretchFactor(1, 1);
    parts->setSizes({kContentsWidth, kFirstSize.width() - kContentsWidth});
    setCentralWidget(parts);
    CreateBar();
    connect(m_browser, &QTextBrowser::historyChanged, this, &CHelpWindow::OnPageShown);
    if (!restoreGeometry(m_configuration.value(kGeometryKey).toByteArray()))
        resize(kFirstSize);
}

void CHelpWindow::CreateBar()
{
    auto* bar = addToolBar(ToQString(Str::ToolBar));
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    const auto add = [&](Str text, const char* icon, const char* keys, auto act) {
        QAction* action = bar->addAction(ThemedIcon(icon), ToQString(text));
        action->setShortcuts(QKeySequence::listFromString(QLatin1String(keys)));
        action->setToolTip(QStringLiteral("%1 (%2)").arg(
            ToQString(text), action->shortcut().toString(QKeySequence::NativeText)));
        connect(action, &QAction::triggered, this, act);
        return action;
    };
    QAction* back = add(Str::HelpBack, "go-back", "Alt+Left", [this] { m_browser->backward(); });
    QAction* forward = add(Str::HelpForward, "go-forward", "Alt+Right", [this] { m_browser->forward(); });
    add(Str::HelpContents, "help", "Alt+Home", [this] {
        m_tabs->setCurrentIndex(0);
        ShowPage(ToQString(HelpPage(CommandId::HelpTopics)));
    });
    add(Str::HelpSearch, "find-command", "Ctrl+F", [this] {
        m_tabs->setCurrentIndex(1);
        m_words->setFocus();
        m_words->selectAll();
    });
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(m_browser, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(m_browser, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);

    auto* close = new QAction(this);
    close->setShortcuts({QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)});
    connect(close, &QAction::triggered, this, &QWidget::close);
    addAction(close);
}

QWidget* CHelpWindow::CreateContents()
{
    m_tree->setHeaderHidden(true);
    m_tree->setFrameShape(QFrame::NoFrame);
    m_tree->setAccessibleName(ToQString(Str::HelpContents));
    QTreeWidgetItem* section = nullptr;
    for (const CHelpContents::Page& page : m_contents.Pages()) {
        if (!section || section->text(0) != page.section) {
            section = new QTreeWidgetItem(m_tree, {page.section});
            section->setFlags(Qt::ItemIsEnabled);
        }
        auto* item = new QTreeWidgetItem(section, {page.title});
        item->setData(0, kNameRole, page.name);
    }
    const auto show = [this](QTreeWidgetItem* item) {
        if (const QVariant name = item->data(0, kNameRole); name.isValid())
            ShowPage(name.toString());
        else
            item->setExpanded(!item->isExpanded());
    };
    connect(m_tree, &QTreeWidget::itemClicked, this, show);
    connect(m_tree, &QTreeWidget::itemActivated, this, [show](QTreeWidgetItem* item) {
        if (item->data(0, kNameRole).isValid())
            show(item);
    });
    return m_tree;
}

QWidget* CHelpWindow::CreateSearch()
{
    auto* page = new QWidget;
    m_words->setPlaceholderText(ToQString(Str::HelpSearchHint));
    m_words->setAccessibleName(m_words->placeholderText());
    m_words->setClearButtonEnabled(true);
    m_found->setFrameShape(QFrame::NoFrame);
    m_found->setAccessibleName(ToQString(Str::HelpFound));
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(m_words);
    layout->addWidget(m_found);
    connect(m_words, &QLineEdit::textChanged, this, &CHelpWindow::Search);
    connect(m_words, &QLineEdit::returnPressed, this, [this] {
        if (QListWidgetItem* first = m_found->item(0))
            ShowPage(first->data(kNameRole).toString());
    });
    const auto show = [this](QListWidgetItem* item) { ShowPage(item->data(kNameRole).toString()); };
    connect(m_found, &QListWidget::itemClicked, this, show);
    connect(m_found, &QListWidget::itemActivated, this, show);
    return page;
}

void CHelpWindow::Search(const QString& words)
{
    m_found->clear();
    if (words.trimmed().isEmpty())
        return;
    for (const CHelpContents::Page& page : m_contents.Search(words)) {
        auto* item = new QListWidgetItem(page.title, m_found);
        item->setToolTip(page.section);
        item->setData(kNameRole, page.name);
    }
}

void CHelpWindow::ShowPage(const QString& name)
{
    const bool isKnown = !CHelpContents::Text(name).isEmpty();
    m_browser->ShowPage(CHelpContents::Url(isKnown ? name : ToQString(HelpPage(CommandId::HelpTopics))));
}

QString CHelpWindow::CurrentPage() const
{
    return CHelpContents::NameOf(m_browser->source());
}

void CHelpWindow::OnPageShown()
{
    setWindowTitle(CHelpContents::Title(CurrentPage()) + QLatin1String(" - ") +
                   ToQString(Text(Str::HelpTitle, Text(Str::ApplicationTitle))));
    for (QTreeWidgetItemIterator item(m_tree); *item; ++item) {
        if ((*item)->data(0, kNameRole).toString() == CurrentPage())
            m_tree->setCurrentItem(*item);
    }
}

void CHelpWindow::hideEvent(QHideEvent* event)
{
    m_configuration.setValue(kGeometryKey, saveGeometry());
    QMainWindow::hideEvent(event);
}
