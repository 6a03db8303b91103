#include "DrawnWindows.h"

#include "forms/Controls.h"
#include "forms/ListControls.h"
#include "forms/ui/Binding.h"
#include "support/SimProcess.h"

#include <QAccessible>
#include <QApplication>
#include <QWidget>
#include <gtest/gtest.h>

namespace velmorak::test {

void drawWindows(Forms& forms,
                 std::initializer_list<std::pair<const char*, ViewRegistry::Builder>> views) {
    ViewRegistry r;
    for (const auto& [name, build] : views)
        r.add(QString::fromLatin1(name), build);
    r.install(forms);
}

FormWindow* drawnView(const Form& f) {
    return dynamic_cast<FormWindow*>(f.view());
}

namespace {

// Controls that show no text of their own have nothing to be named by.
bool nameless(const Control* c) {
    if (auto* l = dynamic_cast<const Label*>(c)) return l->caption().isEmpty();
    return dynamic_cast<const Frame*>(c) || dynamic_cast<const Grid*>(c) ||
           dynamic_cast<const StatusBar*>(c) || dynamic_cast<const PictureBox*>(c) ||
           dynamic_cast<const Shape*>(c);
}

} // namespace

void expectDrawnAndNamed(const Form& f, const QString& title) {
    FormWindow* view = drawnView(f);
    ASSERT_NE(view, nullptr) << f.name().toStdString() << " is not drawn";
    EXPECT_EQ(view->binding().report().join('\n').toStdString(), "");
    if (!title.isEmpty()) {
        EXPECT_TRUE(view->window()->windowTitle().startsWith(title))
            << view->window()->windowTitle().toStdString();
    }
    for (Control* c : f.controls()) {
        QObject* o = view->binding().boundTo(c->fullName());
        EXPECT_TRUE(o || !c->visual()) << c->fullName().toStdString() << " has no widget";
        auto* w = qobject_cast<QWidget*>(o);
        if (!w) continue;
        QAccessibleInterface* i = QAccessible::queryAccessibleInterface(w);
        ASSERT_NE(i, nullptr) << c->fullName().toStdString();
        EXPECT_EQ(i->text(QAccessible::Description), c->fullName());
        if (!nameless(c)) {
            EXPECT_FALSE(i->text(QAccessible::Name).trimmed().isEmpty())
                << c->fullName().toStdString() << " has no human name";
        }
    }
}

void savePicture(const Form& f, const QString& name) {
    FormWindow* view = drawnView(f);
    ASSERT_NE(view, nullptr);
    QApplication::processEvents();
    EXPECT_TRUE(view->window()->grab().save(buildDir() + "/tests/" + name + ".png"));
}

} // namespace velmorak::test
