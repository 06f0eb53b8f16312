#include <zkit/img.h>

int main()
{
    ZImage<ZBW8> image(10, 10);
    float average = 1;
    return ImgPixelAverage(&image, average) == Z_OK && average == 0 ? 0 : 1;
}
