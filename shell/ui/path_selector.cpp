#include "shell/ui/path_selector.h"

#include "platform/file_system.h"
#include "shell/ui/form1.h"

#include <QComboBox>
#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

namespace zor {
PathSelector::PathSelector(FileSystem& files, QWidget* parent) : QFrame(parent), files_(files) {
    setObjectName(QStringLiteral("Frame3"));
    setFrameShape(QFrame::Box);
    setAutoFillBackground(true);
    drvList = new QComboBox(this);
    drvList->setObjectName(QStringLiteral("drvList"));
    dirList = new QListWidget(this);
    dirList->setObjectName(QStringLiteral("dirList"));
    filList = new QListWidget(this);
    filList->setObjectName(QStringLiteral("filList"));
    txtSearchSpec = new QLineEdit(QStringLiteral("*.*"), this);
    txtSearchSpec->setObjectName(QStringLiteral("txtSearchSpec"));
    Label10 = new QLabel(this);
    Label10->setObjectName(QStringLiteral("Label10"));
    Command11 = new QPushButton(QStringLiteral("Close"), this);
    Command11->setObjectName(QStringLiteral("Command11"));
    Command15 = new QPushButton(QStringLiteral("Insert"), this);
    Command15->setObjectName(QStringLiteral("Command15"));
    Command16 = new QPushButton(QStringLiteral("START"), this);
    Command16->setObjectName(QStringLiteral("Command16"));

    auto* grid = new QGridLayout(this);
    grid->addWidget(drvList, 0, 0);
    grid->addWidget(txtSearchSpec, 0, 1);
    grid->addWidget(Label10, 1, 0, 1, 2);
    grid->addWidget(dirList, 2, 0);
    grid->addWidget(filList, 2, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(Command16);
    buttons->addWidget(Command15);
    buttons->addStretch();
    buttons->addWidget(Command11);
    grid->addLayout(buttons, 3, 0, 1, 2);

    connect(drvList, &QComboBox::activated, this, [this](int i) { SetPath(drvList->itemData(i).toString()); });
    // A double click goes into a directory; the first entry goes up.
    connect(dirList, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) {
        SetPath(item->data(Qt::UserRole).toString());
    });
    connect(txtSearchSpec, &QLineEdit::returnPressed, this, [this] { SetPattern(txtSearchSpec->text()); });
    connect(Command11, &QPushButton::clicked, this, &QWidget::hide);
}

void PathSelector::FillDrives(const QString& home) {
    drvList->clear();
    QStringList places = {QStringLiteral("/"), home};
    for (const QString& base : {QStringLiteral("/media"), QStringLiteral("/mnt"), QStringLiteral("/media/") + QDir(home).dirName()})
        for (const QString& name : files_.Subdirectories(base)) places << base + u'/' + name;
    places.removeDuplicates();
    for (const QString& place : places)
        if (QDir(place).exists()) drvList->addItem(place, place);
}

void PathSelector::SetPath(const QString& directory) {
    path_ = QDir::cleanPath(QDir(directory).absolutePath());
    // The drive list shows the place the directory lies in.
    int best = -1;
    qsizetype bestLength = -1;
    for (int i = 0; i < drvList->count(); ++i) {
        const QString place = drvList->itemData(i).toString();
        const bool inside = place == u"/" || path_ == place || path_.startsWith(place + u'/');
        if (inside && place.size() > bestLength) {
            best = i;
            bestLength = place.size();
        }
    }
    if (best >= 0) drvList->setCurrentIndex(best);
    Fill();
}

void PathSelector::SetPattern(const QString& pattern) {
    txtSearchSpec->setText(pattern.trimmed().isEmpty() ? QStringLiteral("*.*") : pattern.trimmed());
    Fill();
}

QString PathSelector::FileName() const {
    const QListWidgetItem* item = filList->currentItem();
    return item ? item->text() : QString();
}

void PathSelector::Fill() {
    // The chosen file stays chosen when the same directory is listed again.
    const QString chosen = FileName();
    const bool sameDirectory = Label10->text() == path_;
    Label10->setText(path_);
    dirList->clear();
    filList->clear();
    if (path_ != QStringLiteral("/")) {
        auto* up = new QListWidgetItem(QStringLiteral(".."), dirList);
        up->setData(Qt::UserRole, QDir::cleanPath(path_ + QStringLiteral("/..")));
    }
    // An unreadable directory simply lists nothing.
    for (const QString& name : files_.Subdirectories(path_)) {
        auto* item = new QListWidgetItem(name, dirList);
        item->setData(Qt::UserRole, path_ == QStringLiteral("/") ? u'/' + name : path_ + u'/' + name);
    }
    filList->addItems(files_.FilesMatching(path_, txtSearchSpec->text()));
    if (sameDirectory && !chosen.isEmpty())
        if (const auto found = filList->findItems(chosen, Qt::MatchExactly); !found.isEmpty()) filList->setCurrentItem(found[0]);
}

void Browse(Form1& f) {
    PathSelector& p = *f.Frame3;
    if (p.drvList->count() == 0) p.FillDrives(f.j.platform.environment.HomeDirectory());
    p.SetPattern(QStringLiteral("*.*"));
    if (p.Path().isEmpty()) p.SetPath(f.j.platform.environment.HomeDirectory());
    // Browsing inserts; only the import starts a scan.
    p.Command15->show();
    p.Command16->hide();
    p.show();
    p.raise();
}

void InsertChosenPath(Form1& f) {
    const PathSelector& p = *f.Frame3;
    if (p.Path().isEmpty()) return;
    const QString file = p.FileName();
    const QString text = file.isEmpty() ? p.Path() : (p.Path() == QStringLiteral("/") ? QString() : p.Path()) + u'/' + file;
    SongGrid& g = f.MFGrid1;
    if (f.j.grid.GridRow < 1 || f.j.grid.GridRow >= g.Rows() || f.j.grid.GridCol < 1 || f.j.grid.GridCol >= kGridCols) return;
    g.SetTextMatrix(f.j.grid.GridRow, f.j.grid.GridCol, text);
}

}  // namespace zor
