<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>TavroPRO</name>
    <message>
        <source>Presentation mode</source>
        <translation>プレゼンモード</translation>
    </message>
    <message>
        <source>Presentation mode is on</source>
        <translation>プレゼンモードはオンです</translation>
    </message>
    <message>
        <source>Presentation mode is off</source>
        <translation>プレゼンモードはオフです</translation>
    </message>
    <message>
        <source>Click here and press the keys</source>
        <translation>ここをクリックしてキーを押してください</translation>
    </message>
    <message>
        <source>Click: options; middle click: presentation mode</source>
        <translation>クリック: オプション、中クリック: プレゼンモード</translation>
    </message>
    <message>
        <source>Hide desktop icons</source>
        <translation>デスクトップのアイコンを隠す</translation>
    </message>
    <message>
        <source>Disable notification</source>
        <translation>通知をオフにする</translation>
    </message>
    <message>
        <source>Hide active apps</source>
        <translation>アクティブなアプリを隠す</translation>
    </message>
    <message>
        <source>Turn off speaker</source>
        <translation>スピーカーをミュートする</translation>
    </message>
    <message>
        <source>Change wallpaper</source>
        <translation>壁紙を変更する</translation>
    </message>
    <message>
        <source>🎉 New version is available. Click to update</source>
        <translation>🎉 新しいバージョンがあります。クリックして更新</translation>
    </message>
    <message>
        <source>Microphones</source>
        <translation>マイク</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>Startup</source>
        <translation>起動</translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation>ログイン時に起動</translation>
    </message>
    <message>
        <source>Toggle TavroPRO</source>
        <translation>TavroPRO の切替</translation>
    </message>
    <message>
        <source>Mute Mic:</source>
        <translation>マイクのミュート:</translation>
    </message>
    <message>
        <source>Wallpaper</source>
        <translation>壁紙</translation>
    </message>
    <message>
        <source>Select...</source>
        <translation>選択…</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>Record Shortcut</source>
        <translation>ショートカットを登録</translation>
    </message>
    <message>
        <source>Press Shortcut</source>
        <translation>キーを押してください</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>消去</translation>
    </message>
    <message>
        <source>This keyboard shortcut cannot be used as it's already a system-wide keyboard shortcut.</source>
        <translation>このキーボードショートカットは、システムですでに使われているため使用できません。</translation>
    </message>
    <message>
        <source>Most system-wide keyboard shortcuts can be changed in “System Preferences › Keyboard › Shortcuts“.</source>
        <translation>システムのキーボードショートカットのほとんどは、「システム設定 › キーボード › ショートカット」で変更できます。</translation>
    </message>
    <message>
        <source>Choose a Image</source>
        <translation>画像を選択</translation>
    </message>
    <message>
        <source>Images</source>
        <translation>画像</translation>
    </message>
    <message>
        <source>Mic Muted</source>
        <translation>マイクオフ</translation>
    </message>
    <message>
        <source>Mic Unmuted</source>
        <translation>マイクオン</translation>
    </message>
    <message>
        <source>Error loading image</source>
        <translation>画像を読み込めません</translation>
    </message>
</context>
</TS>
