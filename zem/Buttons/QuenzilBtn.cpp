// SPDX-License-Identifier: MIT
#include "zem/Buttons/QuenzilBtn.h"

#include "qip/Monitors/qipButton.h"
#include "qip/Monitors/qipTButton_X.h"
#include "qip/Support/qipAssert.h"

#include <new>

// Passes a press on to its button.
class QuenzilBtn::Sensor : public qipButton
{
public:
    explicit Sensor(QuenzilBtn* owner) : _owner(owner) {}
    void triggered() override { _owner->triggered(); }

private:
    QuenzilBtn* _owner;
};

QuenzilBtn::QuenzilBtn(const char* name, const char* label, const char* const* image,
                       const char* const* image2)
    : qipTButton(name)
{
    _btn = new (std::nothrow) Sensor(this);
    qipAssert(_btn != 0);
    _engn = new (std::nothrow) qipTButton_X(name, _btn);
    qipAssert(_engn != 0);
    _btn->engine(_engn);
    _engn->setLabel(label);
    _engn->setImage(image, image2);
}

QuenzilBtn::~QuenzilBtn() = default;

const char* QuenzilBtn::className() const
{
    return "QuenzilBtn";
}
