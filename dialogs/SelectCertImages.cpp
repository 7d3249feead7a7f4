/* Pictures of SelectCertDialog: media buttons and logo. */

#include <QLabel>
#include <QPushButton>

#include "BoundedText.h"
#include "SelectCertDialog.h"
#include "UiSelectCertDialog.h"
#include "quillgate/toolkit.h"

namespace {

/** A media button: its bit in SetButtonImage, the stem of its four images and the key of its name. */
constexpr struct MediaButton
{
    int bit;
    QPushButton* Ui_SelectCertDialog::*button;
    const char* image;
    const char* key;
} mediaButtons[] = {
    {1, &Ui_SelectCertDialog::pushButton_hdd, "HDD", "DLG_BUTTONMEDIA_HDD"},
    {2, &Ui_SelectCertDialog::pushButton_remove, "MOVE", "DLG_BUTTONMEDIA_REMOVE"},
    {4, &Ui_SelectCertDialog::pushButton_bscert, "USIM", "DLG_BUTTONMEDIA_USIM"},
    {8, &Ui_SelectCertDialog::pushButton_token, "TOKEN", "DLG_BUTTONMEDIA_PKCS11"},
    {16, &Ui_SelectCertDialog::pushButton_smcard, "SMCARD", "DLG_BUTTONMEDIA_SMCARD"},
    {32, &Ui_SelectCertDialog::pushButton_phone, "PHONE", "DLG_BUTTONMEDIA_PHONE"},
};

enum ButtonMode
{
    modeDisabled = 0,
    modeNormal = 1,
    modePressed = 2,
};

QPixmap mediaImage(const char* stem, int mode, bool korean)
{
    const bool normal = mode == modeDisabled || mode == modeNormal;
    return QPixmap(
        QStringLiteral(":/png/image/%1_%2%3.png")
            .arg(QLatin1String(stem), QLatin1String(normal ? "N" : "P"), QLatin1String(korean ? "" : "E")));
}

QPixmap logoImage(const char* name)
{
    return QPixmap(QLatin1String(":/bmp/image/") + QString::fromLocal8Bit(name));
}

/** What follows the last slash: hosts pass paths of their own machines, of which only the name counts. */
const char* baseName(const char* path)
{
    const char* slash = std::strrchr(path, '/');
    return slash ? slash + 1 : path;
}

/** A toolkit context with a byte string on its way in and one on its way out. */
struct Decoder
{
    Decoder() = default;
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;
    ~Decoder()
    {
        ZR_BINSTR_Delete(context, &in);
        ZR_BINSTR_Delete(context, &out);
        ZR_Finish(context);
    }

    bool open(int toolkit, char* workDir)
    {
        char library[] = "libZRToolkitV30-v3.4.2.20.so";
        return ZR_Initalize(&context, toolkit, workDir, library) == QG_OK &&
               ZR_BINSTR_Create(context, &in) == QG_OK && ZR_BINSTR_Create(context, &out) == QG_OK;
    }

    bool decode(char* text, int length)
    {
        auto* bytes = reinterpret_cast<unsigned char*>(text);
        return ZR_BINSTR_SetData(context, bytes, length, &in) == QG_OK &&
               Base64Decode(context, &in, &out) == QG_OK && out.pData && out.nLen > 0;
    }

    void* context = nullptr;
    BINSTR in = {};
    BINSTR out = {};
};

} // namespace

void SelectCertDialog::SetButtonImage(int nMode, int nMediaBit, int nLanguage)
{
    for (const MediaButton& media : mediaButtons) {
        if (media.bit != nMediaBit)
            continue;
        QPushButton* button = ui->*media.button;
        const QString name = texts().ui(media.key);
        const QPixmap image = mediaImage(media.image, nMode, nLanguage == 1);
        if (image.isNull()) {
            button->setText(name);
        } else {
            QIcon icon;
            icon.addPixmap(image, QIcon::Normal, QIcon::Off);
            button->setIcon(icon);
            button->setIconSize(nMode == modePressed ? QSize(52, 62) : QSize(50, 60));
        }
        button->setAccessibleName(name);
        button->setEnabled(nMode == modeNormal || nMode == modePressed);
    }
}

void SelectCertDialog::SetLogoImage()
{
    QPixmap logo;
    if (m_stSelectOpt.bNTSLogo) {
        ui->label_logo->setPixmap(logoImage("NTSLogo.bmp"));
        return ui->label_logo->show();
    }
    const char* name = m_stSelectOpt.szLogoName;
    if (std::strcmp(name, "LOAD_DATA") == 0 &&
        LoadDataforSetPixmap(m_stExtraOpt.szLogoData, static_cast<int>(std::strlen(m_stExtraOpt.szLogoData))))
        return ui->label_logo->show();
    if (*name)
        logo = logoImage(baseName(name));
    if (logo.isNull())
        logo = logoImage(ui->pushButton_bscert->isEnabled() ? "BriskSealLogo.bmp" : "Logo.bmp");
    ui->label_logo->setPixmap(logo);
    ui->label_logo->show();
}

bool SelectCertDialog::LoadDataforSetPixmap(char* pszData, int nLen)
{
    Decoder decoder;
    if (!decoder.open(m_nLibAPIType, m_stLoadOpt.szWorkDir) || !decoder.decode(pszData, nLen))
        return false;
    QPixmap image;
    if (!image.loadFromData(decoder.out.pData, static_cast<uint>(decoder.out.nLen), "BMP") || image.isNull())
        return false;
    ui->label_logo->setPixmap(image);
    return true;
}
