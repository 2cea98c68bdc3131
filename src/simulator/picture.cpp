#include "simulator/picture.h"

#include <algorithm>
#include <cmath>

#include "simulator/noise.h"

namespace simulator {

namespace {

constexpr float kRidgesPerInch = 55;
constexpr float kFinestPeriod = 2.5F;  // ridges finer than a resolution shows are drawn as fine as it can
constexpr float kFlatLevel = 205;
constexpr float kDarkLevel = 5;

// A picture with its measures at hand.
struct Canvas {
    GrayView view;
    float width;
    float height;
    float period;
    Random random;

    Point at(float x, float y) const { return {x * width, y * height}; }
};

// A place given in half extents of the patch, upright.
Point onPatch(const RidgePatch& patch, float x, float y) {
    const float c = std::cos(patch.tilt);
    const float s = std::sin(patch.tilt);
    const float across = x * patch.halfWidth;
    const float down = y * patch.halfHeight;
    return {patch.centre.x + across * c - down * s, patch.centre.y + across * s + down * c};
}

// One of the patterns that fingers have, as often as they have them: loops to either side, whorls, arches.
RidgeFlow fingerFlow(const RidgePatch& patch, Random& random) {
    RidgeFlow flow;
    flow.angle = -patch.tilt;
    const float pattern = random.within(0, 1);
    const float side = random.within(0, 1) < 0.5F ? -1.0F : 1.0F;
    const float shift = random.within(-0.06F, 0.06F);
    if (pattern < 0.62F) {
        flow.cores = {onPatch(patch, shift, -0.12F + shift)};
        flow.deltas = {onPatch(patch, side * random.within(0.45F, 0.65F), random.within(0.5F, 0.7F))};
        flow.arch = 0.5F;
    } else if (pattern < 0.92F) {
        flow.cores = {onPatch(patch, shift, -0.2F), onPatch(patch, shift / 2, random.within(0, 0.12F))};
        flow.deltas = {onPatch(patch, -0.7F + shift, 0.62F - shift), onPatch(patch, 0.7F, 0.62F + shift)};
        flow.arch = 0.3F;
    } else {
        flow.arch = random.within(1.1F, 1.5F);
    }
    return flow;
}

void drawFingertip(Canvas& canvas, Point centre, float halfWidth, float halfHeight, float tilt, bool jointed) {
    Random& random = canvas.random;
    RidgePatch patch{centre, halfWidth, halfHeight,   tilt, canvas.period * random.within(0.94F, 1.06F),
                     {},     {},        random.next()};
    patch.flow = fingerFlow(patch, random);
    if (jointed) {
        patch.creases = {
            {onPatch(patch, -1.1F, 0.72F), onPatch(patch, 0, 0.8F), onPatch(patch, 1.1F, 0.7F), 1.3F * canvas.period}};
    }
    drawRidges(canvas.view, patch);
}

void drawFinger(Canvas& canvas) {
    Random& random = canvas.random;
    const Point centre = canvas.at(random.within(0.47F, 0.53F), random.within(0.47F, 0.53F));
    drawFingertip(canvas, centre, 0.35F * canvas.width, 0.44F * canvas.height, random.within(-0.12F, 0.12F), false);
}

// Four fingers side by side, spread a little; each ends at a height of its own.
struct FingerPlace {
    float x;
    float y;
    float halfWidth;
    float halfHeight;
    float tilt;
};

void drawFingers(Canvas& canvas, const FingerPlace (&places)[4]) {
    for (const FingerPlace& place : places) {
        const float shift = canvas.random.within(-0.01F, 0.01F);
        drawFingertip(canvas, canvas.at(place.x + shift, place.y + shift), place.halfWidth * canvas.width,
                      place.halfHeight * canvas.height, place.tilt + 2 * shift, true);
    }
}

void drawSlap(Canvas& canvas) {
    drawFingers(canvas, {{0.14F, 0.47F, 0.105F, 0.26F, -0.14F},
                         {0.38F, 0.36F, 0.11F, 0.28F, -0.04F},
                         {0.62F, 0.40F, 0.11F, 0.27F, 0.05F},
                         {0.86F, 0.56F, 0.09F, 0.22F, 0.16F}});
}

// The three great lines and many small ones.
std::vector<Crease> palmCreases(const RidgePatch& patch, Random& random) {
    const float width = 1.5F * patch.period;
    std::vector<Crease> creases{
        {onPatch(patch, 1.0F, -0.45F), onPatch(patch, 0.3F, -0.3F), onPatch(patch, -0.45F, -0.85F), width},
        {onPatch(patch, -0.95F, -0.35F), onPatch(patch, 0.0F, -0.3F), onPatch(patch, 0.75F, 0.15F), width},
        {onPatch(patch, -0.9F, -0.3F), onPatch(patch, 0.25F, -0.1F), onPatch(patch, -0.15F, 0.95F), width},
    };
    for (int i = 0; i < 26; ++i) {
        const float x = random.within(-0.9F, 0.9F);
        const float y = random.within(-0.8F, 0.9F);
        const float runs = random.within(-0.3F, 0.3F);
        const float falls = random.within(-0.25F, 0.25F);
        creases.push_back({onPatch(patch, x, y), onPatch(patch, x + runs / 2 + 0.03F, y + falls / 2 - 0.03F),
                           onPatch(patch, x + runs, y + falls), random.within(0.35F, 0.7F) * patch.period});
    }
    return creases;
}

void drawPalmAt(Canvas& canvas, Point centre, float halfWidth, float halfHeight) {
    Random& random = canvas.random;
    RidgePatch patch{centre, halfWidth, halfHeight,   random.within(-0.06F, 0.06F), 1.08F * canvas.period,
                     {},     {},        random.next()};
    // Three flows meet below each finger; between the fingers they turn back.
    for (const float x : {-0.68F, -0.2F, 0.25F, 0.72F}) {
        patch.flow.deltas.push_back(onPatch(patch, x, -0.72F + 0.12F * x * x));
    }
    for (const float x : {-0.45F, 0.02F, 0.5F}) {
        patch.flow.cores.push_back(onPatch(patch, x, -0.95F));
    }
    patch.flow.cores.push_back(onPatch(patch, 0.75F, 0.35F));
    patch.flow.angle = 0.5F + random.within(-0.1F, 0.1F);
    patch.creases = palmCreases(patch, random);
    drawRidges(canvas.view, patch);
}

void drawPalm(Canvas& canvas) {
    drawPalmAt(canvas, canvas.at(0.5F, 0.5F), 0.43F * canvas.width, 0.44F * canvas.height);
}

void drawHand(Canvas& canvas) {
    drawFingers(canvas, {{0.17F, 0.28F, 0.075F, 0.16F, -0.2F},
                         {0.39F, 0.21F, 0.08F, 0.18F, -0.06F},
                         {0.62F, 0.23F, 0.08F, 0.175F, 0.06F},
                         {0.84F, 0.34F, 0.065F, 0.14F, 0.2F}});
    drawPalmAt(canvas, canvas.at(0.5F, 0.72F), 0.42F * canvas.width, 0.25F * canvas.height);
}

// An evenly lit white: brightest in the middle, with the noise of the sensor and some dust.
void drawFlat(Canvas& canvas) {
    const uint64_t seed = canvas.random.next();
    GrayView& view = canvas.view;
    for (uint32_t y = 0; y < view.height; ++y) {
        const float down = 2 * static_cast<float>(y) / canvas.height - 1;
        for (uint32_t x = 0; x < view.width; ++x) {
            const float across = 2 * static_cast<float>(x) / canvas.width - 1;
            const float noise = noiseAt(seed, static_cast<int32_t>(x), static_cast<int32_t>(y));
            const float level = kFlatLevel * (1 - 0.06F * (across * across + down * down)) + 8 * (noise - 0.5F);
            view.pixels[static_cast<size_t>(y) * view.width + x] =
                static_cast<uint8_t>(noise > 0.99998F ? level / 2 : level);
        }
    }
}

void drawDark(Canvas& canvas) {
    const uint64_t seed = canvas.random.next();
    for (size_t i = 0; i < canvas.view.pixels.size(); ++i) {
        canvas.view.pixels[i] = static_cast<uint8_t>(kDarkLevel + 4 * noiseAt(seed, static_cast<int32_t>(i), 0));
    }
}

}  // namespace

void drawPicture(GrayView picture, const Scene& scene) {
    Canvas canvas{picture, static_cast<float>(picture.width), static_cast<float>(picture.height),
                  std::max(static_cast<float>(scene.resolution) / kRidgesPerInch, kFinestPeriod), Random(scene.seed)};
    drawBlank(picture, scene.seed);
    switch (scene.kind) {
        case PictureKind::Finger:
            return drawFinger(canvas);
        case PictureKind::Slap:
            return drawSlap(canvas);
        case PictureKind::Palm:
            return drawPalm(canvas);
        case PictureKind::Hand:
            return drawHand(canvas);
        case PictureKind::Flat:
            return drawFlat(canvas);
        case PictureKind::Dark:
            return drawDark(canvas);
    }
}

}  // namespace simulator
