#include "forms/Snapshot.h"

#include "forms/Form.h"
#include "forms/Forms.h"

namespace velmorak {

QString shownText(const Control& c) {
    if (auto* b = dynamic_cast<const Button*>(&c)) return b->caption();
    if (auto* t = dynamic_cast<const TextBox*>(&c)) return t->text();
    if (auto* l = dynamic_cast<const Label*>(&c)) return l->caption();
    if (auto* m = dynamic_cast<const MenuItem*>(&c)) return m->caption();
    if (auto* f = dynamic_cast<const Frame*>(&c)) return f->caption();
    if (auto* cb = dynamic_cast<const CheckBox*>(&c)) return cb->caption();
    if (auto* cbo = dynamic_cast<const ComboBox*>(&c)) return cbo->text();
    if (auto* lst = dynamic_cast<const ListBox*>(&c)) return lst->text();
    if (auto* sb = dynamic_cast<const StatusBar*>(&c)) return sb->panels().join(u'|');
    // A picture shows as the name of its file.
    if (auto* p = dynamic_cast<const PictureBox*>(&c)) return p->picture().section(u'/', -1);
    return QString();
}

QStringList formSnapshot(const Form& form) {
    QStringList out{QStringLiteral("caption\t") + form.caption()};
    for (const Control* c : form.controls()) {
        QString text = shownText(*c);
        text.replace(u'\t', u' ').replace(u'\n', u' ');
        out << QStringLiteral("%1\t%2\t%3\t%4")
                   .arg(c->fullName())
                   .arg(c->visible() ? 1 : 0)
                   .arg(c->enabled() ? 1 : 0)
                   .arg(text);
    }
    return out;
}

QStringList formsSnapshot(const Forms& forms) {
    QStringList out;
    for (const Form* f : forms.forms())
        for (const QString& line : formSnapshot(*f))
            out << f->name() + u'.' + line;
    return out;
}

} // namespace velmorak
