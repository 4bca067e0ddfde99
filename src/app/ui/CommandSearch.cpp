// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/CommandSearch.h"

#include "app/CommandNames.h"
#include "app/ui/Shortcuts.h"
#include "platform/ui/QtText.h"
#include "platform/ui/ThemedIcon.h"

#include <QAccessible>
#include <QFrame>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <array>

namespace {

enum Role { kId = Qt::UserRole, kPlace, kKeys, kIsEnabled };

constexpr int kMargin = 6;
constexpr int kRowsShown = 12;
constexpr int kWidthInLetters = 72;

/// A row: icon and name, the way through the menus in a lighter colour, the keys at the right edge.
class CCommandDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        size.setHeight(std::max(option.decorationSize.height(), option.fontMetrics.height()) + kMargin);
        return size;
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QStyleOptionViewItem item(option);
        initStyleOption(&item, index);
        const bool isEnabled = index.data(kIsEnabled).toBool();
        const bool isSelected = item.state.testFlag(QStyle::State_Selected);
        const QString name = item.text;
        item.text.clear();
        item.icon = {};
        item.widget->style()->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

        QRect area = option.rect.adjusted(kMargin, 0, -kMargin, 0);
        const QSize side = option.decorationSize;
        const QIcon icon = index.data(Qt::DecorationRole).value<QIcon>();
        icon.paint(painter, QRect(area.topLeft(), QSize(side.width(), area.height())), Qt::AlignCenter,
                   !isEnabled   ? QIcon::Disabled
                   : isSelected ? QIcon::Selected
                                : QIcon::Normal);
        area.adjust(side.width() + kMargin, 0, 0, 0);

        const auto color = [&](QPalette::ColorGroup group) {
            return item.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text);
        };
        const QColor main = color(isEnabled ? QPalette::Active : QPalette::Disabled);
        QColor light = main;
        light.setAlphaF(light.alphaF() * kLight);
        painter->save();
        painter->setFont(item.font);
        painter->setPen(main);
        const QString keys = index.data(kKeys).toString();
        painter->drawText(area, Qt::AlignVCenter | Qt::AlignRight, keys);
        area.setRight(area.right() - item.fontMetrics.horizontalAdvance(keys) - 2 * kMargin);
        painter->drawText(area, Qt::AlignVCenter | Qt::AlignLeft,
                          item.fontMetrics.elidedText(name, Qt::ElideRight, area.width()));
        area.setLeft(area.left() + item.fontMetrics.horizontalAdvance(name) + 2 * kMargin);
        painter->setPen(light);
        painter->drawText(area, Qt::AlignVCenter | Qt::AlignLeft,
                          item.fontMetrics.elidedText(index.data(kPlace).toString(), Qt::ElideRight,
                                                      std::max(0, area.width())));
        painter->restore();
    }

private:
    static constexpr float kLight = 0.65F;
};

QStandardItem* MakeItem(const CommandRow& row, const CommandContext& context, const CShortcuts& shortcuts)
{
    CommandContext own = context;
    own.id = row.id;
    const bool isEnabled = row.isEnabled(own);
    QString name = row.currentText ? TranslatedQString(row.currentText(own)) : ToQString(CommandName(row));
    name.remove(QLatin1Char('&'));
    QString place = ToQString(CommandPlace(row));
    if (!isEnabled)
        place += QStringLiteral(" (%1)").arg(ToQString(WhyDisabled(own, row.id)));
    const QString keys = shortcuts.TextOf(row.id);

    auto* item = new QStandardItem(ThemedIcon(row.icon), name);
    item->setEditable(false);
    item->setToolTip(TranslatedQString(row.prompt));
    item->setData(static_cast<int>(row.id), kId);
    item->setData(place, kPlace);
    item->setData(keys, kKeys);
    item->setData(isEnabled, kIsEnabled);
    item->setData(QStringList({name, place, keys}).join(QLatin1String(", ")), Qt::AccessibleTextRole);
    return item;
}

} // namespace

CCommandSearch::CCommandSearch(const CommandContext& context, const CShortcuts& shortcuts, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint), m_context(context), m_shortcuts(shortcuts),
      m_words(new QLineEdit), m_model(new QStandardItemModel(this)), m_list(new QListView)
{
    setWindowTitle(ToQString(Str::FindCommand));
    m_words->setPlaceholderText(ToQString(Str::FindCommandHint));
    m_words->setAccessibleName(windowTitle());
    m_words->setClearButtonEnabled(true);
    m_words->installEventFilter(this);
    m_list->setModel(m_model);
    m_list->setItemDelegate(new CCommandDelegate(m_list));
    m_list->setUniformItemSizes(true);
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setAccessibleName(ToQString(Str::FoundCommands));
    m_list->setMinimumWidth(fontMetrics().averageCharWidth() * kWidthInLetters);
    m_list->setMinimumHeight((std::max(m_list->iconSize().height(), fontMetrics().height()) + kMargin) *
                             kRowsShown);

    auto* frame = new QFrame;
    frame->setFrameShape(QFrame::StyledPanel);
    auto* layout = new QVBoxLayout(frame);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->addWidget(m_words);
    layout->addWidget(m_list);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(frame);
    connect(m_words, &QLineEdit::textChanged, this, &CCommandSearch::Fill);
    connect(m_words, &QLineEdit::returnPressed, this, &CCommandSearch::accept);
    connect(m_list, &QListView::clicked, this, &CCommandSearch::accept);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this, &CCommandSearch::Announce);
    Fill({});
    if (parent) {
        const QRect window = parent->window()->geometry();
        move(window.center().x() - sizeHint().width() / 2, window.top() + window.height() / 8);
    }
}

void CCommandSearch::Fill(const QString& words)
{
    m_model->clear();
    for (const CommandRow* row : SearchCommands(ToUtf8(words)))
        m_model->appendRow(MakeItem(*row, m_context, m_shortcuts));
    m_list->setCurrentIndex(m_model->index(0, 0));
}

void CCommandSearch::Announce()
{
    // The list never has the focus itself, so readers would not hear of its current row.
    if (!QAccessible::isActive() || !m_list->currentIndex().isValid())
        return;
    QAccessibleEvent event(m_list, QAccessible::Focus);
    event.setChild(m_list->currentIndex().row());
    QAccessible::updateAccessibility(&event);
}

bool CCommandSearch::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_words && event->type() == QEvent::KeyPress) {
        constexpr std::array kListKeys = {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown};
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (std::ranges::find(kListKeys, key) != kListKeys.end())
            return QCoreApplication::sendEvent(m_list, event);
    }
    return QDialog::eventFilter(watched, event);
}

bool CCommandSearch::event(QEvent* event)
{
    // As a menu does, it goes when something else is clicked; it also loses the window by being closed.
    if (event->type() == QEvent::WindowDeactivate && isVisible() && !m_chosen)
        reject();
    return QDialog::event(event);
}

void CCommandSearch::accept()
{
    const QModelIndex current = m_list->currentIndex();
    if (!current.isValid() || !current.data(kIsEnabled).toBool())
        return;
    m_chosen = static_cast<CommandId>(current.data(kId).toInt());
    QDialog::accept();
}
