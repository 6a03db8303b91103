#pragma once

#include "forms/Form.h"
#include "link/AppContext.h"
#include "registers/RegisterMap.h"
#include "registers/RegisterWalker.h"

#include <QByteArray>
#include <QString>

#include <initializer_list>

namespace velmorak {

// What the two laser windows share: the rows of their map, the buttons and menus, the message
// box over the buttons, the laser's serial number and the saved position.
class LaserForm : public Form {
  public:
    LaserForm(const QString& name, const QString& caption, AppContext& ctx, const RegisterMap& map);

    BitsFieldArray& rows;
    Button& cmdLoad = add<Button>("cmdLoad");
    Button& cmdRead = add<Button>("cmdRead");
    Button& cmdDefault = add<Button>("cmdDefault");
    TextBox& txtMsg = add<TextBox>("txtMsg");
    TextBox& txtSerial = add<TextBox>("txtSerial");
    Label& lblCSerN = add<Label>("lblCSerN");
    MenuItem& mnuFile = add<MenuItem>("mnuFile");
    MenuItem& mnuLoad = add<MenuItem>("mnuLoad");
    MenuItem& mnuRead = add<MenuItem>("mnuRead");
    MenuItem& mnuSaveN = add<MenuItem>("mnuSaveN");
    MenuItem& mnuClose = add<MenuItem>("mnuClose");

    QString PrevSerial;

    const RegisterMap& map() const { return map_; }
    // The register bytes from the carrier rows, in load order.
    QByteArray buildImage() { return collectBlock(rows, map_); }
    Grid& gridOf(int row) const;
    // The grid row of a member.
    int gridRowOf(int row) const;
    virtual void SetToTable(const QByteArray& image) = 0;

  protected:
    void formActivate() override;
    void formUnload(bool& cancel) override;

    // Builds the rows and grids, wires every row's click to rowClicked.
    void buildTable();
    virtual void rowClicked(int row) = 0;
    // Buttons (and menu entries) that an action turns off and on again.
    virtual void setActionsEnabled(bool on) = 0;
    // Turns the buttons on as after an action: read and load only with a card.
    void enableAfterAction();

    // The window opens with a card: the laser block and the serial are read. Returns the block.
    QByteArray loadFromCard(bool setSerialBase);
    virtual void blankCard() = 0;
    void restoreLayout();

    // Shows txtMsg with this text for ms, the window frozen.
    void showMessage(const QString& text, int ms);
    void writeImage(const QByteArray& image);
    QByteArray readImage();
    // Characters 1 to 4, 6 and 7 as sent, and, when asked, 5 without its bit 7.
    static bool sameImage(const QByteArray& reply, const QByteArray& image, bool fifth);
    static bool noReply(const QByteArray& reply) { return reply == QByteArray(1, '\0'); }

    AppContext& c_;

  private:
    void saveSerial();
    void serialChanged();
    static void serialKey(int& key);

    const RegisterMap& map_;
};

} // namespace velmorak
