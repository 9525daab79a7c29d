"""Every key of the movie's and the window's menu in every display mode, in the console and from the monitor."""

import functools

from case import CLIP_NAMES, CLIPS, CONSOLE, MONITOR, NO_TIME, Case, seen
from desk import clips, keys
from desk.show import LEFT, RIGHT

LONG = "0 長.mp4"
LONG_CLIP, LONG_RATE = 4, 10  # the number in its pictures, and how many a second
ONE_MINUTE = "1"  # the free step

# Displays, changed lines of the settings. Without its upper half a picture is still read, but not told apart.
MODES = {
    "two_displays": ([LEFT, RIGHT], {}),
    "under_the_console": ([LEFT], {4: "false", 8: "false"}),
    "behind_the_console": ([(0, 0, 1280, 1024)], {2: "false", 4: "true"}),
    "hidden_monitor": ([LEFT], {2: "false", 4: "false", 8: "true"}),
}
NO_PICTURE = {None, (15, 4095)}

MOVING = object()  # what the clock moves while a movie plays
SHOWN = {CONSOLE, MONITOR}
IDLE = {"file": "", "mode": "", "length": NO_TIME, "clip": None, "at": 0, "volume": "Volume： 80", "bar": 80, "mute": False,
        "rate": "Rate：±０", "speed": 5, "loop": "", "drift": "±0秒： Timing", "windows": SHOWN}
PLAYING = {"mode": "再生中", "at": MOVING, "drift": MOVING}
STOPPED = {"mode": "停止", "at": 0, "drift": "±0秒：Timing"}

# A walk through the menus: the item, and what its key changes. All else must stay as it was.
WALK = [
    ("ファイルを開く", {**PLAYING, "file": LONG, "length": "00：02：30", "clip": LONG_CLIP, "volume": "Volume：  80"}),
    ("一時停止・再生", {"mode": "一時停止"}),
    ("停止", STOPPED),
    ("指定時間進める", {"at": 60}),
    ("30秒進める", {"at": 90}),
    ("5秒進める", {"at": 95}),
    ("現在位置をマーク", {}),
    ("指定時間戻す", {"at": 35}),
    ("5秒戻す", {"at": 30}),
    ("30秒戻す", {"at": 0}),
    ("5秒戻す", {}),
    ("マーク位置に移動", {"at": 95}),
    ("スピードを上げる", {"rate": "Rate：＋１", "speed": 6}),
    ("スピードを下げる", {"rate": "Rate： ±０", "speed": 5}),
    ("ボリューム　＋", {"volume": "Volume：  81", "bar": 81}),
    ("ボリューム　−", {"volume": "Volume：  80", "bar": 80}),
    ("ミュート", {"mute": True}),
    ("ボリューム　−", {"volume": "Volume：  79", "bar": 79, "mute": False}),
    ("リストループ設定", {"loop": "↓"}),
    ("単一ループ設定", {"loop": "→"}),
    ("コンソールウィンドウを隠す", {"windows": {MONITOR}}),
    ("コンソールウィンドウを隠す", {"windows": SHOWN}),
    ("一時停止・再生", PLAYING),
    ("ファイルを閉じる", {"file": "", "mode": "", "length": NO_TIME, "clip": None, "at": 0, "drift": " ±0秒：Timing"}),
]
ELSEWHERE = {"Quit", "バージョン情報", "環境設定"}
CONSOLE_ONLY = {"スピードを上げる", "スピードを下げる"}


class EveryKey(Case):
    monitors = None

    def begin(self, mode):
        self.mode = mode
        monitors, lines = MODES[mode]
        self.set_up(monitors)
        self.desk.put(CLIPS / LONG)
        self.desk.settings({12: ONE_MINUTE, **lines})
        self.program_show = self.start()
        self.program_show.until_rows([LONG, *CLIP_NAMES])
        sections = keys.read()
        self.keys = {**sections["コントローラー"], **sections["ウィンドウ"]}
        self.assertEqual({item for item, _ in WALK} | ELSEWHERE, set(self.keys))
        return self.program_show

    # What an operator sees

    def state(self):
        show = self.program_show
        windows = set(self.desk.screen.windows()) & SHOWN
        codes = [self.code(window, windows) for window in (CONSOLE, MONITOR) if window in windows]
        here = [None if code in NO_PICTURE else code[0] for code in codes]
        at = [show.text("PosTIme"), show.text("MonitorPosTime"), clock(seen.number(show.control("QTM_PosBar")))]
        at += [clock(code[1] // LONG_RATE) for code in codes if code not in NO_PICTURE]
        return {"file": show.text("FileLabel"), "mode": show.text("PlayModeLabel"), "length": show.text("MaxTime"),
                "clip": here[0] if len(set(here)) == 1 else here, "at": at[0] if len(set(at)) == 1 else at,
                "volume": show.text("VolumeLabel"), "bar": seen.number(show.control("VolumeProgress")),
                "mute": not seen.enabled(show.control("VolumeLabel")), "rate": show.text("RateText"),
                "speed": seen.number(show.control("Rate")), "loop": show.text("LoopLabel"),
                "drift": show.text("TimingLabel"), "windows": windows}

    def code(self, window, windows):
        whole = self.mode != "behind_the_console" or window == CONSOLE or CONSOLE not in windows
        return clips.read_code(self.desk.screen.picture, self.program_show.picture_area(window), whole)

    def until_state(self, wanted, after):
        def differs():
            state = self.state()
            return {key: state[key] for key, value in wanted.items() if value is not MOVING and state[key] != value}
        wanted = {**wanted, "at": clock(wanted["at"]) if isinstance(wanted["at"], int) else wanted["at"]}
        try:
            self.desk.waiter.until(lambda: not differs(), "")
        except AssertionError:
            self.fail(f"after {after}: {differs()}, not {wanted}; standard error: {self.program_show.program.errors}")

    def walk(self, wanted, changes, chord=0):
        for item, change in WALK:
            change = changes(item, change)
            wanted = {**wanted, **change}
            self.program_show.press(*self.keys[item][min(chord, len(self.keys[item]) - 1)])
            self.until_state(wanted, item)
            if item == "30秒進める" or change.get("mode") == "再生中":
                self.shoot(f"{item}-{wanted['mode']}")
        return wanted

    def in_console(self, mode):
        show = self.begin(mode)
        hidden = mode == "hidden_monitor"
        self.until_in_front(show, CONSOLE)
        idle = {**IDLE, "windows": {CONSOLE}} if hidden else IDLE
        self.until_state(idle, "the start")
        self.walk(idle, lambda item, change: {} if hidden and "windows" in change else change)
        show.press(*self.keys["Quit"][0])
        self.assertEqual(show.program.exit_status()[0], 0)

    def in_monitor(self, mode):
        """The console is hidden; what is seen of it comes from its labels all the same."""
        show = self.begin(mode)
        self.until_in_front(show, CONSOLE)
        show.press(*self.keys["コンソールウィンドウを隠す"][0])
        self.until_in_front(show, MONITOR)

        def changes(item, change):
            if item in CONSOLE_ONLY:
                return {}
            return {**change, "windows": SHOWN ^ change["windows"] | {MONITOR}} if "windows" in change else change
        self.walk({**IDLE, "windows": {MONITOR}}, changes, chord=1)
        # This closes the monitor and nothing else; the console comes, as no other window is left.
        show.press(*self.keys["Quit"][0])
        show.until(lambda: set(self.desk.screen.windows()) & SHOWN == {CONSOLE}, "the console alone")
        self.until_in_front(show, CONSOLE)
        show.forget(MONITOR)
        show.press("Return")  # needs the monitor, which is made anew as it was designed
        show.until(lambda: MONITOR in self.desk.screen.windows(), "the monitor")
        left, top, _, height = self.desk.screen.windows()[CONSOLE]
        self.until_monitor(show, (left, top + height + 6, 320, 240))
        show.until(lambda: (self.code(CONSOLE, SHOWN) or (0, 0))[1] > LONG_RATE, "the preview playing")


def clock(seconds):
    return f"{int(seconds) // 3600:02}：{int(seconds) // 60 % 60:02}：{int(seconds) % 60:02}"


for name in MODES:
    setattr(EveryKey, f"test_{name}", functools.partialmethod(EveryKey.in_console, name))
    if name != "hidden_monitor":
        setattr(EveryKey, f"test_{name}_from_the_monitor", functools.partialmethod(EveryKey.in_monitor, name))
