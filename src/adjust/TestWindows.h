#pragma once

#include "forms/Form.h"

namespace velmorak {

struct AppContext;

// frmTest: the sharpness pattern, a window without controls. Its view paints the stripe
// bitmap and hands it the mouse releases, double clicks and key releases.
class FrmTest : public Form {
  public:
    // The stripe bitmap: one-pixel columns, white in the even ones, over the whole height.
    static constexpr int kStripeWidth = 1927;
    static constexpr int kStripeHeight = 1674;
    static constexpr int kWidth = 200;

    explicit FrmTest(AppContext& ctx);

    void mouseUp();
    void dblClick();
    // Every key release is taken here; the returned code is 0 (the key is consumed).
    int keyUp(int keyCode);

  protected:
    void formUnload(bool& cancel) override;

  private:
    void toggle();
    void fullScreen();
    AppContext& c_;
};

// frmTestC and frmTestG: one picture, impicT, as tall as the window, loaded from a file of
// bars beside the program.
class FrmTestBars : public Form {
  public:
    static constexpr int kWidth = 200;
    // impicT's width; the bar files are drawn this wide.
    static constexpr int kPictureWidth = 192;
    static constexpr const char* kColorFile = "colorC.bmp";
    static constexpr const char* kGrayFile = "colorG.bmp";

    FrmTestBars(AppContext& ctx, const QString& name, const QString& caption, QString appPath);

    Image& impicT = add<Image>("impicT");

    // Loads one of the bar files into impicT; an empty name clears it.
    void loadBars(const QString& file);
    // A mouse release on the window outside the picture, and on the picture.
    void mouseUp();
    void pictureMouseUp();

  protected:
    void formUnload(bool& cancel) override;

  private:
    bool isColor() const;
    AppContext& c_;
    QString appPath_;
};

// Where a picture file lies: beside the database or the program, else in the installed data.
QString testPictureFile(const QString& appPath, const QString& file);

} // namespace velmorak
