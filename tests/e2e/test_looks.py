"""Every window at the display scale 2, for the eye: the pictures lie in the folder of the shots."""

from case import CLIP_NAMES, CLIPS, CONSOLE, LOGO, SHOTS, Case, desks, seen, unittest
from desk.show import ABOUT, CHOOSER, PREFERENCES

SIZES = {CONSOLE: 800, PREFERENCES: 688, ABOUT: 245}


class Looks(Case):
    def test_twice(self):
        scale = 2
        def shoot(title, name):
            self.desk.waiter.until_still(lambda: screen.picture.area(*screen.windows()[title]), still=0.3)
            screen.picture.save_png(SHOTS / f"scale {scale} {name}.png", *screen.windows()[title])

        def click(control):
            show.click(*(scale * place for place in seen.centre(control)))

        icon = desks.pixels(LOGO.with_name("Kirolane.png"), "bgra")
        self.desk.put(CLIPS / "音.wav")
        show = self.start(environment={"QT_SCALE_FACTOR": str(scale)})
        screen = self.desk.screen
        show.until_rows(CLIP_NAMES)
        self.assertIn(icon, b"".join(word.to_bytes(4, "little") for word in screen.icon(CONSOLE)))
        show.press("Return")
        show.until_text("PosTIme", "00：00：01")
        show.press("space")
        click(seen.named(show.control("ListTab"), "サウンド"))
        show.until(lambda: seen.showing(show.control("mStrGrid")), "the sounds' page")
        show.press("Return")
        show.until(show.sound_window, "the sound window")
        show.press("Shift_L", "space")
        show.until_text("PlayModeLabel", "一時停止")
        shoot(CONSOLE, "console sounds")
        self.desk.waiter.until_still(show.sound_window, still=1.2)  # the title follows the movie
        shoot(show.sound_window(), "sound")
        show.until(lambda: screen.windows().get(show.sound_window(), (0, 0, 0, 0))[2:] == (140 * scale, 265 * scale),
                   "the size of the sound window")
        click(seen.named(show.control("ListTab"), "ムービー"))
        shoot(CONSOLE, "console")
        click(show.control("Fold99"))
        show.window(CHOOSER)
        shoot(CHOOSER, "chooser")
        show.press("Escape")
        show.until_gone(CHOOSER)
        show.open_about()
        self.assertEqual(show.text("CopyrightLabel", ABOUT), "© 2026 Kirolane contributors")
        shoot(ABOUT, "about")
        click(show.control("OKButton", ABOUT))
        show.open_preferences()
        shoot(PREFERENCES, "preferences")
        click(show.control("SettingButton", PREFERENCES))
        show.until(lambda: show.text("MessageLabel", PREFERENCES), "the word of the save")
        click(seen.named(show.control("ListTab", PREFERENCES), "サウンド"))
        shoot(PREFERENCES, "preferences sounds")
        for title, width in SIZES.items():
            if title in screen.windows():
                self.assertEqual(screen.windows()[title][2], width * scale, title)


if __name__ == "__main__":
    unittest.main()
