<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja">
<context>
    <name>AppUpdates</name>
    <message>
        <source>The downloaded installer could not be found. Download the update again.</source>
        <translation>ダウンロードしたインストーラーが見つかりません。アップデートをもう一度ダウンロードしてください。</translation>
    </message>
    <message>
        <source>Downloading…</source>
        <extracomment>The update button while the new version downloads</extracomment>
        <translation>ダウンロード中…</translation>
    </message>
    <message>
        <source>Open installer</source>
        <extracomment>The update button once the installer is downloaded: it opens the installer</extracomment>
        <translation>インストーラーを開く</translation>
    </message>
    <message>
        <source>Update</source>
        <extracomment>The button that downloads a newer version of Inkwarden</extracomment>
        <translation>アップデート</translation>
    </message>
    <message>
        <source>Inkwarden could not determine the latest available version.</source>
        <translation>Inkwarden は利用可能な最新バージョンを確認できませんでした。</translation>
    </message>
    <message>
        <source>Update check failed: %1</source>
        <extracomment>%1 is the reason, such as a network error</extracomment>
        <translation>アップデートの確認に失敗しました：%1</translation>
    </message>
    <message>
        <source>Enter a valid server URL in Settings before downloading an update.</source>
        <translation>アップデートをダウンロードする前に、設定で有効なサーバー URL を入力してください。</translation>
    </message>
    <message>
        <source>Downloading update… You can keep using Inkwarden.</source>
        <translation>アップデートをダウンロード中です… その間も Inkwarden を引き続き使用できます。</translation>
    </message>
    <message>
        <source>Update failed: %1</source>
        <extracomment>%1 is the reason, such as a network error</extracomment>
        <translation>アップデートに失敗しました：%1</translation>
    </message>
    <message>
        <source>Update downloaded. Opening the installer…</source>
        <translation>アップデートをダウンロードしました。インストーラーを開いています…</translation>
    </message>
    <message>
        <source>Opening the installer…</source>
        <translation>インストーラーを開いています…</translation>
    </message>
    <message>
        <source>Enter a valid server URL in Settings before opening the dashboard.</source>
        <translation>ダッシュボードを開く前に、設定で有効なサーバー URL を入力してください。</translation>
    </message>
    <message>
        <source>Inkwarden could not open the dashboard URL.</source>
        <translation>Inkwarden はダッシュボードの URL を開けませんでした。</translation>
    </message>
</context>
<context>
    <name>BrowserSignIn</name>
    <message>
        <source>Enter a valid Inkwarden server URL.</source>
        <translation>有効な Inkwarden サーバーの URL を入力してください。</translation>
    </message>
    <message>
        <source>Inkwarden received an invalid sign-in response.</source>
        <translation>Inkwarden は無効なサインイン応答を受信しました。</translation>
    </message>
    <message>
        <source>This sign-in response does not match the current request. Please try again.</source>
        <translation>このサインイン応答は現在のリクエストと一致しません。もう一度お試しください。</translation>
    </message>
</context>
<context>
    <name>ConnectView</name>
    <message>
        <source>See your latest royalties from the menu bar.</source>
        <translation>パネルから最新のロイヤリティを確認できます。</translation>
    </message>
    <message>
        <source>Connect manually</source>
        <extracomment>Toggle that unfolds the form for typing a server address and an API key by hand</extracomment>
        <translation>手動で接続</translation>
    </message>
    <message>
        <source>Server</source>
        <extracomment>Field title above the address of the Inkwarden server</extracomment>
        <translation>サーバー</translation>
    </message>
    <message>
        <source>Server URL</source>
        <translation>サーバー URL</translation>
    </message>
    <message>
        <source>API key</source>
        <extracomment>Field title above the key that gives Inkwarden access to the account</extracomment>
        <translation>API キー</translation>
    </message>
    <message>
        <source>Inkwarden API key</source>
        <translation>Inkwarden API キー</translation>
    </message>
    <message>
        <source>Browser sign-in fills the API key automatically. Manual entry remains available whenever you need it.</source>
        <translation>ブラウザーでサインインすると API キーが自動的に入力されます。必要なときはいつでも手動で入力することもできます。</translation>
    </message>
    <message>
        <source>Quit</source>
        <extracomment>Button that quits Inkwarden</extracomment>
        <translation>終了</translation>
    </message>
    <message>
        <source>Connect to Inkwarden</source>
        <extracomment>The sign-in screen of the popover, as screen readers name it</extracomment>
        <translation>Inkwarden に接続</translation>
    </message>
</context>
<context>
    <name>ConnectViewModel</name>
    <message>
        <source>Waiting for browser sign-in…</source>
        <extracomment>Title of the sign-in button while the browser sign-in is under way.</extracomment>
        <translation>ブラウザーでのサインイン待ち…</translation>
    </message>
    <message>
        <source>Sign in with Inkwarden</source>
        <extracomment>Button that signs in through the browser.</extracomment>
        <translation>Inkwarden でサインイン</translation>
    </message>
    <message>
        <source>Connecting…</source>
        <extracomment>Title of the connect button while the API key is being checked.</extracomment>
        <translation>接続中…</translation>
    </message>
    <message>
        <source>Connect with API key</source>
        <extracomment>Button that connects with the API key typed in above it.</extracomment>
        <translation>API キーで接続</translation>
    </message>
    <message>
        <source>Version %1</source>
        <extracomment>Under the sign-in form: %1 is Inkwarden&apos;s version number (&quot;1.4.0&quot;).</extracomment>
        <translation>バージョン %1</translation>
    </message>
</context>
<context>
    <name>ConnectionSession</name>
    <message>
        <source>No internet connection. Inkwarden will refresh automatically when it returns.</source>
        <translation>インターネットに接続されていません。接続が回復すると Inkwarden が自動的に更新します。</translation>
    </message>
    <message>
        <source>This API key does not have access to any accounts.</source>
        <translation>この API キーでアクセスできるアカウントがありません。</translation>
    </message>
    <message>
        <source>Not refreshed yet</source>
        <extracomment>When the royalty figures were last fetched: never yet</extracomment>
        <translation>まだ更新されていません</translation>
    </message>
    <message>
        <source>Refreshed just now</source>
        <extracomment>When the royalty figures were last fetched</extracomment>
        <translation>たった今更新</translation>
    </message>
    <message>
        <source>Refreshed %1s ago</source>
        <extracomment>When the royalty figures were last fetched: %1 seconds ago (&quot;s&quot; abbreviates seconds)</extracomment>
        <translation>%1 秒前に更新</translation>
    </message>
    <message>
        <source>Refreshed %1m ago</source>
        <extracomment>When the royalty figures were last fetched: %1 minutes ago (&quot;m&quot; abbreviates minutes)</extracomment>
        <translation>%1 分前に更新</translation>
    </message>
    <message>
        <source>Refreshed %1h ago</source>
        <extracomment>When the royalty figures were last fetched: %1 hours ago (&quot;h&quot; abbreviates hours)</extracomment>
        <translation>%1 時間前に更新</translation>
    </message>
    <message>
        <source>Refreshed %1h %2m ago</source>
        <extracomment>When the royalty figures were last fetched: %1 hours and %2 minutes ago (&quot;h&quot; and &quot;m&quot; abbreviate hours and minutes)</extracomment>
        <translation>%1 時間 %2 分前に更新</translation>
    </message>
    <message>
        <source>Waiting for internet…</source>
        <extracomment>Instead of the time of the next refresh, while there is no network</extracomment>
        <translation>インターネット接続を待機中…</translation>
    </message>
    <message>
        <source>Refreshing now…</source>
        <extracomment>Instead of the time of the next refresh, while the figures are being fetched</extracomment>
        <translation>更新中…</translation>
    </message>
    <message>
        <source>Automatic refresh not scheduled</source>
        <translation>自動更新は予定されていません</translation>
    </message>
    <message>
        <source>Next refresh in %1</source>
        <extracomment>%1 is a countdown, such as 04:59 or 1:04:59</extracomment>
        <translation>次の更新まで %1</translation>
    </message>
    <message>
        <source>Refresh queued…</source>
        <extracomment>Instead of the time of the next refresh, when it is due and waits its turn</extracomment>
        <translation>更新待ち…</translation>
    </message>
</context>
<context>
    <name>DashboardView</name>
    <message>
        <source>Settings</source>
        <extracomment>Tool tip of the gear button that opens the settings page</extracomment>
        <translation>設定</translation>
    </message>
    <message>
        <source>Period</source>
        <extracomment>Accessible name of the picker choosing the time span of the royalty figures (Today, This Month, ...)</extracomment>
        <translation>期間</translation>
    </message>
    <message>
        <source>SALES BREAKDOWN</source>
        <extracomment>Section heading above the royalties per book format; shown in capital letters</extracomment>
        <translation>販売内訳</translation>
    </message>
    <message>
        <source>Refresh</source>
        <extracomment>Footer button that fetches the royalties again now</extracomment>
        <translation>更新</translation>
    </message>
    <message>
        <source>Open My Dashboard</source>
        <extracomment>Footer button that opens the author&apos;s dashboard on the Inkwarden website</extracomment>
        <translation>ダッシュボードを開く</translation>
    </message>
    <message>
        <source>Quit</source>
        <extracomment>Footer button that quits Inkwarden</extracomment>
        <translation>終了</translation>
    </message>
    <message>
        <source>Royalties</source>
        <extracomment>The dashboard screen of the popover, as screen readers name it</extracomment>
        <translation>ロイヤリティ</translation>
    </message>
    <message>
        <source>Server, account, figures, notifications and updates</source>
        <extracomment>What the gear button does, for screen readers</extracomment>
        <translation>サーバー、アカウント、表示、通知、アップデート</translation>
    </message>
</context>
<context>
    <name>DashboardViewModel</name>
    <message numerus="yes">
        <source>Period selection available in %1s</source>
        <extracomment>Under the period picker while requests must wait: %1 is a number of seconds, &quot;s&quot; their symbol.</extracomment>
        <translation>
            <numerusform>%1 秒後に期間を選択できます</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>DisplayedRoyalty</name>
    <message>
        <source>Gross royalties</source>
        <extracomment>The royalties before spending is taken off, as the headline figure (a choice in Settings)</extracomment>
        <translation>総ロイヤリティ</translation>
    </message>
    <message>
        <source>Net royalties</source>
        <extracomment>The royalties after spending is taken off, as the headline figure (a choice in Settings)</extracomment>
        <translation>純ロイヤリティ</translation>
    </message>
</context>
<context>
    <name>EarningsCard</name>
    <message>
        <source>Refreshing</source>
        <extracomment>Said by screen readers as a refresh of the royalties begins
----------
Accessible name of the small spinner shown while the royalties are fetched</extracomment>
        <translation>更新中</translation>
    </message>
    <message>
        <source>Refreshed. %1: %2</source>
        <extracomment>Said by screen readers when new figures arrived: &quot;Refreshed. Gross royalties: $1,234.50&quot;</extracomment>
        <translation>更新しました。%1：%2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <extracomment>The headline for screen readers: the figure&apos;s name (&quot;Gross royalties&quot;), then the amount</extracomment>
        <translation>%1：%2</translation>
    </message>
</context>
<context>
    <name>FinancialRowsModel</name>
    <message>
        <source>Gross royalties</source>
        <extracomment>Row of the popover&apos;s figures: royalties before ad spend and expenses.</extracomment>
        <translation>総ロイヤリティ</translation>
    </message>
    <message>
        <source>Ad spend &amp; expenses</source>
        <extracomment>Row of the popover&apos;s figures: what was spent on ads and other expenses in the period.</extracomment>
        <translation>広告費と経費</translation>
    </message>
    <message>
        <source>Net royalties</source>
        <extracomment>Row of the popover&apos;s figures: royalties after ad spend and expenses.</extracomment>
        <translation>純ロイヤリティ</translation>
    </message>
</context>
<context>
    <name>FormatSalesRow</name>
    <message>
        <source>%1, %2, %3</source>
        <extracomment>Accessible name of a sales breakdown row: format, units sold, royalties</extracomment>
        <translation>%1、%2、%3</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <extracomment>Accessible name of a sales breakdown row without royalties: format, units sold</extracomment>
        <translation>%1、%2</translation>
    </message>
</context>
<context>
    <name>FreedesktopNotifications</name>
    <message>
        <source>Open Inkwarden</source>
        <extracomment>The notification&apos;s action (a button, or a click on it with some desktops): shows the popover.</extracomment>
        <translation>Inkwarden を開く</translation>
    </message>
</context>
<context>
    <name>InstallerDownloader</name>
    <message>
        <source>The request timed out.</source>
        <translation>リクエストがタイムアウトしました。</translation>
    </message>
    <message>
        <source>The latest Inkwarden update could not be downloaded.</source>
        <translation>Inkwarden の最新のアップデートをダウンロードできませんでした。</translation>
    </message>
    <message>
        <source>The update could not be saved: %1</source>
        <extracomment>%1 is the system&apos;s reason why the file could not be written</extracomment>
        <translation>アップデートを保存できませんでした：%1</translation>
    </message>
    <message>
        <source>The folder %1 could not be created.</source>
        <extracomment>%1 is the path of a folder</extracomment>
        <translation>フォルダー %1 を作成できませんでした。</translation>
    </message>
    <message>
        <source>The earlier download at %1 could not be replaced.</source>
        <extracomment>%1 is the path of an installer downloaded before</extracomment>
        <translation>%1 にある以前のダウンロードを置き換えられませんでした。</translation>
    </message>
    <message>
        <source>The update could not be moved to %1: %2</source>
        <extracomment>%1 is the path the installer goes to, %2 the system&apos;s reason why it could not</extracomment>
        <translation>アップデートを %1 に移動できませんでした：%2</translation>
    </message>
</context>
<context>
    <name>LinuxDesktopServices</name>
    <message>
        <source>The file could not be found.</source>
        <extracomment>Why a downloaded update&apos;s installer did not open (follows &quot;The system did not open the installer: &quot;).</extracomment>
        <translation>ファイルが見つかりません。</translation>
    </message>
    <message>
        <source>A program needed to open the file is not installed.</source>
        <extracomment>Why a downloaded update&apos;s installer did not open (follows &quot;The system did not open the installer: &quot;).</extracomment>
        <translation>ファイルを開くのに必要なプログラムがインストールされていません。</translation>
    </message>
    <message>
        <source>No application could open the file.</source>
        <extracomment>Why a downloaded update&apos;s installer did not open (follows &quot;The system did not open the installer: &quot;).</extracomment>
        <translation>ファイルを開けるアプリケーションがありません。</translation>
    </message>
    <message>
        <source>The file opener %1 ended with exit status %2.</source>
        <extracomment>Why a downloaded update&apos;s installer did not open: %1 is a program&apos;s name (&quot;xdg-open&quot;), %2 the number it ended with.</extracomment>
        <translation>ファイルを開くプログラム %1 が終了ステータス %2 で終了しました。</translation>
    </message>
    <message>
        <source>No file was given to open.</source>
        <extracomment>Why a downloaded update&apos;s installer did not open (follows &quot;The system did not open the installer: &quot;).</extracomment>
        <translation>開くファイルが指定されていません。</translation>
    </message>
    <message>
        <source>The file “%1” does not exist.</source>
        <extracomment>Why a downloaded update&apos;s installer did not open: %1 is the file&apos;s name.</extracomment>
        <translation>ファイル「%1」は存在しません。</translation>
    </message>
    <message>
        <source>The file opener %1 could not be started: %2</source>
        <extracomment>Why a downloaded update&apos;s installer did not open: %1 is a program&apos;s name (&quot;gio&quot;), %2 Qt&apos;s reason.</extracomment>
        <translation>ファイルを開くプログラム %1 を起動できませんでした：%2</translation>
    </message>
    <message>
        <source>The file opener %1 stopped unexpectedly.</source>
        <extracomment>Why a downloaded update&apos;s installer did not open: %1 is a program&apos;s name (&quot;gio&quot;).</extracomment>
        <translation>ファイルを開くプログラム %1 が予期せず停止しました。</translation>
    </message>
    <message>
        <source>No program that opens files is installed: Inkwarden needs gio (package libglib2.0-bin) or xdg-open (package xdg-utils).</source>
        <extracomment>Why a downloaded update&apos;s installer did not open. Keep the program and package names as they are.</extracomment>
        <translation>ファイルを開くプログラムがインストールされていません。Inkwarden には gio（パッケージ libglib2.0-bin）または xdg-open（パッケージ xdg-utils）が必要です。</translation>
    </message>
</context>
<context>
    <name>MenuContentView</name>
    <message>
        <source>Later</source>
        <extracomment>Button of the update prompt: do not download the new version now</extracomment>
        <translation>後で</translation>
    </message>
    <message>
        <source>Download Update</source>
        <extracomment>Button of the update prompt</extracomment>
        <translation>ダウンロード</translation>
    </message>
</context>
<context>
    <name>MetricRow</name>
    <message>
        <source>%1: %2</source>
        <extracomment>Accessible name of a financial figure: its name, then the amount</extracomment>
        <translation>%1：%2</translation>
    </message>
</context>
<context>
    <name>PanelStatusBuilder</name>
    <message>
        <source>Inkwarden Royalties</source>
        <extracomment>Heading of the panel icon&apos;s tool tip.</extracomment>
        <translation>Inkwarden ロイヤリティ</translation>
    </message>
    <message>
        <source>Not signed in</source>
        <extracomment>Line of the panel icon&apos;s tool tip, also said by its name for screen readers, while no account is connected.</extracomment>
        <translation>サインインしていません</translation>
    </message>
    <message>
        <source>Not refreshed yet</source>
        <extracomment>In the panel icon&apos;s tool tip after the figure, and in its name for screen readers: no royalties were fetched yet.</extracomment>
        <translation>まだ更新されていません</translation>
    </message>
    <message>
        <source>Refreshed at %1</source>
        <extracomment>In the panel icon&apos;s tool tip, after the figure: %1 is a time of today (&quot;14:05&quot;).</extracomment>
        <translation>%1 に更新</translation>
    </message>
    <message>
        <source>Refreshed %1</source>
        <extracomment>In the panel icon&apos;s tool tip, after the figure: %1 is a date and time before today (&quot;3/4/25 14:05&quot;).</extracomment>
        <translation>%1 に更新</translation>
    </message>
    <message>
        <source>%1: %2 · %3</source>
        <extracomment>Line of the panel icon&apos;s tool tip: %1 is the period the figure covers (&quot;Today&quot;), %2 the figure shown in the panel (&quot;$1,235&quot;), %3 when it was refreshed (&quot;Refreshed at 14:05&quot;). The dot separates the last two.</extracomment>
        <translation>%1：%2 · %3</translation>
    </message>
    <message>
        <source>Inkwarden: %1 %2</source>
        <extracomment>The panel icon&apos;s name, as screen readers read it: %1 is the period the figure covers (&quot;Today&quot;), %2 the figure shown in the panel (&quot;$1,235&quot;, or &quot;$•••&quot; while amounts are hidden).</extracomment>
        <translation>Inkwarden：%1 %2</translation>
    </message>
    <message>
        <source>Inkwarden: %1</source>
        <extracomment>The panel icon&apos;s name, as screen readers read it, while it shows no figure: %1 says why (&quot;Not signed in&quot;, &quot;Not refreshed yet&quot;).</extracomment>
        <translation>Inkwarden：%1</translation>
    </message>
</context>
<context>
    <name>PlatformTexts</name>
    <message>
        <source>Could not save the API key in the keyring (%1).</source>
        <extracomment>%1 is the error code the keyring returned</extracomment>
        <translation>API キーをキーリングに保存できませんでした（%1）。</translation>
    </message>
    <message>
        <source>Unlock your keyring to show your royalties.</source>
        <translation>ロイヤリティを表示するには、キーリングのロックを解除してください。</translation>
    </message>
    <message>
        <source>Your keyring is not answering. Inkwarden will read your API key as soon as it does.</source>
        <translation>キーリングが応答しません。応答があり次第、Inkwarden が API キーを読み込みます。</translation>
    </message>
    <message>
        <source>Your keyring is locked, so the API key could not be saved. Unlock your keyring, then sign in again.</source>
        <translation>キーリングがロックされているため、API キーを保存できませんでした。キーリングのロックを解除してから、もう一度サインインしてください。</translation>
    </message>
    <message>
        <source>My Account → Settings → API Access · Stored securely in your system keyring</source>
        <extracomment>Under the API key field. &quot;My Account&quot;, &quot;Settings&quot; and &quot;API Access&quot; are the pages of the Inkwarden website where the key is found, each arrow leading to the next</extracomment>
        <translation>マイアカウント → 設定 → API アクセス · システムのキーリングに安全に保存されます</translation>
    </message>
    <message>
        <source>Show in Files</source>
        <extracomment>A button that shows the downloaded installer in the file manager</extracomment>
        <translation>フォルダーを開く</translation>
    </message>
    <message>
        <source>The update is downloaded. Open it from your file manager to continue.</source>
        <translation>アップデートをダウンロードしました。続けるには、ファイルマネージャーから開いてください。</translation>
    </message>
    <message>
        <source>The system did not open the installer: %1</source>
        <extracomment>%1 is the system&apos;s reason</extracomment>
        <translation>システムがインストーラーを開けませんでした：%1</translation>
    </message>
    <message>
        <source>Installer opened. If it is not visible, choose Show in Files.</source>
        <extracomment>&quot;Show in Files&quot; is the button of that name</extracomment>
        <translation>インストーラーを開きました。表示されない場合は「フォルダーを開く」を選んでください。</translation>
    </message>
    <message>
        <source>Download the latest version now?</source>
        <translation>最新バージョンを今すぐダウンロードしますか？</translation>
    </message>
    <message>
        <source>Approval is required in your system&apos;s autostart settings</source>
        <extracomment>Under the setting that starts Inkwarden when the user logs in</extracomment>
        <translation>システムの自動起動の設定で許可が必要です</translation>
    </message>
    <message>
        <source>Launch Inkwarden after you sign in to or restart your computer</source>
        <extracomment>Under the setting that starts Inkwarden when the user logs in</extracomment>
        <translation>コンピューターへのログイン時や再起動後に Inkwarden を起動します</translation>
    </message>
    <message>
        <source>Inkwarden is registered, but the system has not approved it. It will not open at login until you enable it in your system&apos;s autostart settings.</source>
        <translation>Inkwarden は登録済みですが、システムに許可されていません。システムの自動起動の設定で有効にするまで、ログイン時には起動しません。</translation>
    </message>
    <message>
        <source>Open Autostart Settings</source>
        <extracomment>A button that opens the desktop&apos;s settings of the programs started at login</extracomment>
        <translation>自動起動の設定を開く</translation>
    </message>
    <message>
        <source>The system could not enable Open at Login. Make sure Inkwarden is installed, then enable it in your system&apos;s autostart settings.</source>
        <extracomment>&quot;Open at Login&quot; is starting Inkwarden when the user logs in</extracomment>
        <translation>システムが「ログイン時に起動」を有効にできませんでした。Inkwarden がインストールされていることを確認してから、システムの自動起動の設定で有効にしてください。</translation>
    </message>
    <message>
        <source>Could not update Open at Login: %1. Make sure Inkwarden is installed, then try again.</source>
        <extracomment>&quot;Open at Login&quot; is starting Inkwarden when the user logs in; %1 is the system&apos;s reason</extracomment>
        <translation>「ログイン時に起動」を変更できませんでした：%1。Inkwarden がインストールされていることを確認してから、もう一度お試しください。</translation>
    </message>
</context>
<context>
    <name>PopoverWindow</name>
    <message>
        <source>Inkwarden Royalties</source>
        <extracomment>The popover&apos;s window, as screen readers announce it as it opens.</extracomment>
        <translation>Inkwarden ロイヤリティ</translation>
    </message>
</context>
<context>
    <name>RoyaltiesError</name>
    <message numerus="yes">
        <source>Please wait %1 seconds before requesting royalties again.</source>
        <extracomment>The server asked to wait before the next request; %1 is a number of seconds. English keeps &quot;seconds&quot; even for 1; other languages use their plural forms</extracomment>
        <translation>
            <numerusform>ロイヤリティを再度リクエストするまで %1 秒お待ちください。</numerusform>
        </translation>
    </message>
    <message>
        <source>Enter a valid server URL, including http:// or https://.</source>
        <translation>http:// または https:// を含む有効なサーバー URL を入力してください。</translation>
    </message>
    <message>
        <source>Enter your Inkwarden API key.</source>
        <translation>Inkwarden の API キーを入力してください。</translation>
    </message>
    <message>
        <source>Inkwarden returned an unexpected response.</source>
        <translation>Inkwarden から予期しない応答が返されました。</translation>
    </message>
</context>
<context>
    <name>RoyaltiesService</name>
    <message>
        <source>Connection closed</source>
        <extracomment>A network error: the server closed the connection</extracomment>
        <translation>接続が閉じられました</translation>
    </message>
    <message>
        <source>The request timed out.</source>
        <translation>リクエストがタイムアウトしました。</translation>
    </message>
    <message>
        <source>Server returned HTTP %1.</source>
        <extracomment>%1 is an HTTP status code, such as 500</extracomment>
        <translation>サーバーが HTTP %1 を返しました。</translation>
    </message>
</context>
<context>
    <name>RoyaltiesStore</name>
    <message>
        <source>Inkwarden could not read its settings file and started with the default settings. The old file was kept as %1.</source>
        <extracomment>%1 is the path of the unreadable settings file, renamed and kept aside</extracomment>
        <translation>Inkwarden は設定ファイルを読み込めなかったため、既定の設定で起動しました。以前のファイルは %1 として保存してあります。</translation>
    </message>
</context>
<context>
    <name>RoyaltyAlerts</name>
    <message>
        <source>New royalties</source>
        <extracomment>The title of a desktop notification when the amounts are hidden</extracomment>
        <translation>新しいロイヤリティ</translation>
    </message>
    <message>
        <source>+%1 in royalties</source>
        <extracomment>The title of a desktop notification; %1 is the amount earned since the last refresh, such as $12.50</extracomment>
        <translation>ロイヤリティ +%1</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <extracomment>The body of a desktop notification: %1 is the period, such as &quot;Today&quot;, %2 its royalties</extracomment>
        <translation>%1：%2</translation>
    </message>
</context>
<context>
    <name>RoyaltyPeriod</name>
    <message>
        <source>Today</source>
        <extracomment>The period of royalty figures shown: the current day</extracomment>
        <translation>今日</translation>
    </message>
    <message>
        <source>Yesterday</source>
        <extracomment>The period of royalty figures shown: the day before today</extracomment>
        <translation>昨日</translation>
    </message>
    <message>
        <source>This Month</source>
        <extracomment>The period of royalty figures shown: the current calendar month so far</extracomment>
        <translation>今月</translation>
    </message>
</context>
<context>
    <name>SalesBreakdownMetric</name>
    <message>
        <source>Paid ebooks</source>
        <extracomment>A row of the sales breakdown: ebooks sold for money</extracomment>
        <translation>有料電子書籍</translation>
    </message>
    <message>
        <source>Paperbacks</source>
        <extracomment>A row of the sales breakdown: paperback copies sold</extracomment>
        <translation>ペーパーバック</translation>
    </message>
    <message>
        <source>Hardcovers</source>
        <extracomment>A row of the sales breakdown: hardcover copies sold</extracomment>
        <translation>ハードカバー</translation>
    </message>
    <message>
        <source>Audiobooks</source>
        <extracomment>A row of the sales breakdown: audiobooks sold</extracomment>
        <translation>オーディオブック</translation>
    </message>
    <message>
        <source>Expanded distribution</source>
        <extracomment>A row of the sales breakdown: print copies sold through other stores and libraries</extracomment>
        <translation>拡大流通</translation>
    </message>
    <message>
        <source>KENP reads</source>
        <extracomment>A row of the sales breakdown: pages read through the subscription lending programme; KENP is a unit name that normally stays as it is</extracomment>
        <translation>KENP 既読ページ</translation>
    </message>
    <message>
        <source>Upcoming pre-orders</source>
        <extracomment>A row of the sales breakdown: pre-orders of books not yet released</extracomment>
        <translation>発売前の予約注文</translation>
    </message>
    <message>
        <source>Free ebooks</source>
        <extracomment>A row of the sales breakdown: ebooks downloaded for free</extracomment>
        <translation>無料電子書籍</translation>
    </message>
    <message numerus="yes">
        <source>%1 pages</source>
        <extracomment>Pages read through the subscription lending programme, %1 being the count. English keeps &quot;pages&quot; even for 1; other languages use their plural forms</extracomment>
        <translation>
            <numerusform>%1 ページ</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 · same for all periods</source>
        <extracomment>%1 is a count of pre-ordered copies, such as &quot;2 units&quot;; the pre-orders do not depend on the period chosen</extracomment>
        <translation>%1 · 全期間共通</translation>
    </message>
    <message numerus="yes">
        <source>%1 downloads</source>
        <extracomment>Free ebook downloads, %1 being the count. English keeps &quot;downloads&quot; even for 1; other languages use their plural forms</extracomment>
        <translation>
            <numerusform>%1 ダウンロード</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 unit(s)</source>
        <extracomment>Copies sold, %1 being the count: &quot;1 unit&quot;, &quot;1,234 units&quot;</extracomment>
        <translation>
            <numerusform>%1 部</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SalesMetricList</name>
    <message>
        <source>Changes the order of the sales breakdown</source>
        <extracomment>What a metric&apos;s move-up and move-down buttons do, for screen readers</extracomment>
        <translation>販売内訳の並び順を変更します</translation>
    </message>
</context>
<context>
    <name>SalesMetricSettingsModel</name>
    <message>
        <source>Move %1 up</source>
        <extracomment>Tool tip of the button that moves a row of sales up in the list: %1 is the row&apos;s title (&quot;Paid ebooks&quot;).</extracomment>
        <translation>%1 を上へ移動</translation>
    </message>
    <message>
        <source>Move %1 down</source>
        <extracomment>Tool tip of the button that moves a row of sales down in the list: %1 is the row&apos;s title (&quot;Paid ebooks&quot;).</extracomment>
        <translation>%1 を下へ移動</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Back</source>
        <extracomment>Tool tip of the arrow button that leaves the settings page</extracomment>
        <translation>戻る</translation>
    </message>
    <message>
        <source>Settings</source>
        <extracomment>Title of the settings page</extracomment>
        <translation>設定</translation>
    </message>
    <message>
        <source>Server URL</source>
        <translation>サーバー URL</translation>
    </message>
    <message>
        <source>Change this to https://… for production</source>
        <extracomment>Hint below the server address; keep https:// as it is</extracomment>
        <translation>本番環境では https://… に変更してください</translation>
    </message>
    <message>
        <source>API key</source>
        <extracomment>Field title above the key that gives Inkwarden access to the account</extracomment>
        <translation>API キー</translation>
    </message>
    <message>
        <source>Account</source>
        <extracomment>Field title above the choice of the publishing account whose royalties are shown</extracomment>
        <translation>アカウント</translation>
    </message>
    <message>
        <source>Loading account…</source>
        <translation>アカウントを読み込み中…</translation>
    </message>
    <message>
        <source>Reload accounts</source>
        <translation>アカウントを再読み込み</translation>
    </message>
    <message>
        <source>Show in menu bar</source>
        <extracomment>Field title: which royalty figure the panel shows beside its icon</extracomment>
        <translation>パネルに表示</translation>
    </message>
    <message>
        <source>This also controls the large highlighted amount</source>
        <translation>大きく表示される金額にも適用されます</translation>
    </message>
    <message>
        <source>Displayed royalty</source>
        <extracomment>Accessible name of the picker choosing which royalty figure is displayed</extracomment>
        <translation>表示するロイヤリティ</translation>
    </message>
    <message>
        <source>Refresh automatically</source>
        <extracomment>Field title above the choice of how often the royalties are fetched</extracomment>
        <translation>自動更新</translation>
    </message>
    <message>
        <source>Inkwarden allows no more than one request every 3 seconds</source>
        <translation>Inkwarden へのリクエストは 3 秒に 1 回までです</translation>
    </message>
    <message>
        <source>Refresh interval</source>
        <translation>更新間隔</translation>
    </message>
    <message>
        <source>Sales breakdown</source>
        <extracomment>Field title above the list of book formats shown in the dashboard&apos;s sales breakdown</extracomment>
        <translation>販売内訳</translation>
    </message>
    <message>
        <source>Choose which formats appear and arrange them in your preferred order</source>
        <translation>表示する形式を選び、好きな順に並べ替えます</translation>
    </message>
    <message>
        <source>Start automatically</source>
        <extracomment>Field title above the switch that starts Inkwarden when the user logs in</extracomment>
        <translation>自動起動</translation>
    </message>
    <message>
        <source>Open Inkwarden at login</source>
        <translation>ログイン時に Inkwarden を起動</translation>
    </message>
    <message>
        <source>Approval required</source>
        <extracomment>Title of a notice: the desktop must approve starting Inkwarden at login</extracomment>
        <translation>許可が必要です</translation>
    </message>
    <message>
        <source>Notifications</source>
        <translation>通知</translation>
    </message>
    <message>
        <source>When a refresh finds new royalties for today or this month</source>
        <translation>更新時に今日または今月の新しいロイヤリティがあった場合</translation>
    </message>
    <message>
        <source>Notify on new royalties</source>
        <translation>新しいロイヤリティを通知</translation>
    </message>
    <message>
        <source>Play a sound</source>
        <extracomment>Switch: play a sound with the notification</extracomment>
        <translation>サウンドを再生</translation>
    </message>
    <message>
        <source>Quiet hours</source>
        <extracomment>Switch: a daily span of time without notifications</extracomment>
        <translation>おやすみ時間</translation>
    </message>
    <message>
        <source>From</source>
        <extracomment>Label before the start time of the quiet hours, read as &quot;From [time] to [time]&quot;</extracomment>
        <translation>開始</translation>
    </message>
    <message>
        <source>Quiet hours start</source>
        <translation>おやすみ時間の開始</translation>
    </message>
    <message>
        <source>to</source>
        <extracomment>Label between the start and end times of the quiet hours, read as &quot;From [time] to [time]&quot;</extracomment>
        <translation>終了</translation>
    </message>
    <message>
        <source>Quiet hours end</source>
        <translation>おやすみ時間の終了</translation>
    </message>
    <message>
        <source>Tell me what came in when they end</source>
        <extracomment>Switch: when the quiet hours end, one notification sums up the royalties that came in during them</extracomment>
        <translation>終了時にまとめて通知</translation>
    </message>
    <message>
        <source>Privacy</source>
        <translation>プライバシー</translation>
    </message>
    <message>
        <source>Every amount shows as $•••, in the panel too, for a screen that others see</source>
        <extracomment>Hint below the Hide amounts switch; the dollar sign with three bullets shows how a hidden amount looks</extracomment>
        <translation>他の人に見られる画面向けに、パネルも含めすべての金額を $••• と表示します</translation>
    </message>
    <message>
        <source>Hide amounts</source>
        <translation>金額を隠す</translation>
    </message>
    <message>
        <source>Version</source>
        <extracomment>Field title above the installed version of Inkwarden and the update buttons</extracomment>
        <translation>バージョン</translation>
    </message>
    <message>
        <source>Save settings</source>
        <translation>設定を保存</translation>
    </message>
    <message>
        <source>Sign out</source>
        <translation>サインアウト</translation>
    </message>
    <message>
        <source>Quit Inkwarden</source>
        <translation>Inkwarden を終了</translation>
    </message>
</context>
<context>
    <name>SettingsViewModel</name>
    <message>
        <source>Loading accounts authorized by this API key</source>
        <extracomment>Hint under the account picker in the settings.</extracomment>
        <translation>この API キーで許可されたアカウントを読み込み中</translation>
    </message>
    <message>
        <source>Account details could not be loaded</source>
        <extracomment>Hint under the account picker in the settings.</extracomment>
        <translation>アカウントの詳細を読み込めませんでした</translation>
    </message>
    <message>
        <source>Every 30 minutes</source>
        <extracomment>Choice of how often royalties are refreshed.</extracomment>
        <translation>30 分ごと</translation>
    </message>
    <message>
        <source>Every hour</source>
        <extracomment>Choice of how often royalties are refreshed.</extracomment>
        <translation>1 時間ごと</translation>
    </message>
    <message>
        <source>Every 2 hours</source>
        <extracomment>Choice of how often royalties are refreshed.</extracomment>
        <translation>2 時間ごと</translation>
    </message>
    <message>
        <source>Every 3 hours</source>
        <extracomment>Choice of how often royalties are refreshed.</extracomment>
        <translation>3 時間ごと</translation>
    </message>
</context>
<context>
    <name>Spinner</name>
    <message>
        <source>Loading</source>
        <extracomment>Accessible name of a turning progress mark shown while something loads</extracomment>
        <translation>読み込み中</translation>
    </message>
</context>
<context>
    <name>StatusCommand</name>
    <message>
        <source>Inkwarden did not tell its status: %1</source>
        <extracomment>Printed by `inkwarden --status`: %1 is the reason the session bus gave.</extracomment>
        <translation>Inkwarden から状態を取得できませんでした：%1</translation>
    </message>
    <message>
        <source>Inkwarden is starting and has no status yet.</source>
        <extracomment>Printed by `inkwarden --status`.</extracomment>
        <translation>Inkwarden は起動中のため、まだ状態がありません。</translation>
    </message>
    <message>
        <source>There is no session bus to find Inkwarden on.</source>
        <extracomment>Printed by `inkwarden --status --follow` when there is no D-Bus session bus.</extracomment>
        <translation>Inkwarden を探すためのセッションバスがありません。</translation>
    </message>
</context>
<context>
    <name>StatusItem</name>
    <message>
        <source>&amp;Open Inkwarden</source>
        <extracomment>Entry of the panel icon&apos;s menu: shows the popover with the royalties. The &amp; marks the access key, unique within this menu.</extracomment>
        <translation>Inkwarden を開く(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Refresh</source>
        <extracomment>Entry of the panel icon&apos;s menu: fetches the royalties again now. The &amp; marks the access key, unique within this menu.</extracomment>
        <translation>更新(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Settings</source>
        <extracomment>Entry of the panel icon&apos;s menu: opens Inkwarden&apos;s settings. The &amp; marks the access key, unique within this menu.</extracomment>
        <translation>設定(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Hide amounts</source>
        <extracomment>Check box entry of the panel icon&apos;s menu: hides the money figures next to the icon and in the popover. The &amp; marks the access key, unique within this menu.</extracomment>
        <translation>金額を隠す(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;Quit Inkwarden</source>
        <extracomment>Entry of the panel icon&apos;s menu: ends Inkwarden. The &amp; marks the access key, unique within this menu.</extracomment>
        <translation>Inkwarden を終了(&amp;Q)</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>Inkwarden is not running.</source>
        <extracomment>Printed by `inkwarden --status`, and the tool tip of a bar&apos;s module, while Inkwarden does not run.</extracomment>
        <translation>Inkwarden は実行されていません。</translation>
    </message>
</context>
<context>
    <name>StatusNotifierItem</name>
    <message>
        <source>Inkwarden Royalties</source>
        <extracomment>Tool tip of the panel icon before any figure is known.</extracomment>
        <translation>Inkwarden ロイヤリティ</translation>
    </message>
</context>
<context>
    <name>TrayIconStatusItem</name>
    <message>
        <source>Inkwarden Royalties</source>
        <extracomment>Tool tip of the panel icon before any figure is known.</extracomment>
        <translation>Inkwarden ロイヤリティ</translation>
    </message>
</context>
<context>
    <name>UpdateViewModel</name>
    <message>
        <source>Inkwarden %1 is available</source>
        <extracomment>Title of the update banner: %1 is the new version number (&quot;1.5.0&quot;).</extracomment>
        <translation>Inkwarden %1 を利用できます</translation>
    </message>
    <message>
        <source>You have version %1</source>
        <extracomment>Under the update banner&apos;s title: %1 is the running version number (&quot;1.4.0&quot;).</extracomment>
        <translation>現在のバージョン：%1</translation>
    </message>
    <message>
        <source>You are using version %1. %2</source>
        <extracomment>Update prompt: %1 is the running version number (&quot;1.4.0&quot;), %2 the question whether to download the new version.</extracomment>
        <translation>現在のバージョンは %1 です。%2</translation>
    </message>
    <message>
        <source>Inkwarden %1</source>
        <extracomment>In the settings: %1 is the running version number (&quot;1.4.0&quot;).</extracomment>
        <translation>Inkwarden %1</translation>
    </message>
    <message>
        <source>Version %1 is available</source>
        <extracomment>In the settings: %1 is the new version number (&quot;1.5.0&quot;).</extracomment>
        <translation>バージョン %1 を利用できます</translation>
    </message>
    <message>
        <source>You’re up to date</source>
        <extracomment>In the settings, once the update check found no newer version.</extracomment>
        <translation>最新の状態です</translation>
    </message>
    <message>
        <source>Checking…</source>
        <extracomment>Title of the check-for-updates button while the check is under way.</extracomment>
        <translation>確認中…</translation>
    </message>
    <message>
        <source>Check for updates</source>
        <extracomment>Button in the settings.</extracomment>
        <translation>アップデートを確認</translation>
    </message>
    <message>
        <source>Downloading…</source>
        <extracomment>Title of the install-update button while the update downloads.</extracomment>
        <translation>ダウンロード中…</translation>
    </message>
    <message>
        <source>Install update</source>
        <extracomment>Button that downloads and opens the new version&apos;s installer.</extracomment>
        <translation>インストール</translation>
    </message>
</context>
<context>
    <name>XdgAutostart</name>
    <message>
        <source>“%1” is a file, not a folder</source>
        <extracomment>Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no full stop at the end). %1 is a path.</extracomment>
        <translation>「%1」はフォルダーではなくファイルです</translation>
    </message>
    <message>
        <source>could not create the folder “%1”: %2</source>
        <extracomment>Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no full stop at the end). %1 is a path, %2 the system&apos;s reason.</extracomment>
        <translation>フォルダー「%1」を作成できませんでした（%2）</translation>
    </message>
    <message>
        <source>Inkwarden could not tell where its own program is</source>
        <extracomment>Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no full stop at the end).</extracomment>
        <translation>Inkwarden のプログラムの場所を特定できませんでした</translation>
    </message>
    <message>
        <source>the program “%1” is missing or not executable</source>
        <extracomment>Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no full stop at the end). %1 is a path.</extracomment>
        <translation>プログラム「%1」が見つからないか、実行可能ではありません</translation>
    </message>
    <message>
        <source>could not write “%1”: %2</source>
        <extracomment>Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no full stop at the end). %1 is a path, %2 the system&apos;s reason.</extracomment>
        <translation>「%1」に書き込めませんでした（%2）</translation>
    </message>
    <message>
        <source>could not save “%1”: %2</source>
        <extracomment>Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no full stop at the end). %1 is a path, %2 the system&apos;s reason.</extracomment>
        <translation>「%1」を保存できませんでした（%2）</translation>
    </message>
    <message>
        <source>could not remove “%1”: %2</source>
        <extracomment>Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no full stop at the end). %1 is a path, %2 the system&apos;s reason.</extracomment>
        <translation>「%1」を削除できませんでした（%2）</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Unknown</source>
        <extracomment>What `inkwarden --version` shows in place of the version number when the build has none.</extracomment>
        <translation>不明</translation>
    </message>
    <message>
        <source>Print the running Inkwarden&apos;s panel title and exit; exits with status 3 when Inkwarden is not running.</source>
        <extracomment>Description of the --status option in `inkwarden --help`.</extracomment>
        <translation>実行中の Inkwarden のパネル表示を出力して終了します。Inkwarden が実行されていない場合は終了ステータス 3 で終了します。</translation>
    </message>
    <message>
        <source>With --status: text (the default), waybar (JSON for waybar&apos;s custom modules) or genmon (for xfce4-genmon-plugin).</source>
        <extracomment>Description of the --format option in `inkwarden --help`. Keep the option and format names (--status, text, waybar, genmon, xfce4-genmon-plugin) as they are.</extracomment>
        <translation>--status と併用：text（既定）、waybar（waybar のカスタムモジュール用の JSON）、genmon（xfce4-genmon-plugin 用）のいずれか。</translation>
    </message>
    <message>
        <source>format</source>
        <extracomment>The value&apos;s name after --format in `inkwarden --help` (&quot;--format &lt;format&gt;&quot;).</extracomment>
        <translation>形式</translation>
    </message>
    <message>
        <source>With --status: keep running and print a new line on every change, waiting for Inkwarden while it is not running.</source>
        <extracomment>Description of the --follow option in `inkwarden --help`.</extracomment>
        <translation>--status と併用：実行を続け、変更のたびに新しい行を出力します。Inkwarden が実行されていない間は起動を待ちます。</translation>
    </message>
    <message>
        <source>Your book royalties at a glance, in the panel.</source>
        <extracomment>The first line of `inkwarden --help`.</extracomment>
        <translation>本のロイヤリティをパネルでひと目で確認できます。</translation>
    </message>
    <message>
        <source>An inkwarden:// address to open, such as the browser&apos;s sign-in.</source>
        <extracomment>Description of the address argument in `inkwarden --help`. Keep &quot;inkwarden://&quot; as it is.</extracomment>
        <translation>開く inkwarden:// アドレス（ブラウザーからのサインインなど）。</translation>
    </message>
    <message>
        <source>Unknown format &quot;%1&quot;: use text, waybar or genmon.</source>
        <extracomment>Printed by `inkwarden --status --format …`: %1 is the format asked for. Keep text, waybar and genmon as they are.</extracomment>
        <translation>不明な形式「%1」です。text、waybar、genmon のいずれかを指定してください。</translation>
    </message>
    <message>
        <source>--status takes no address.</source>
        <extracomment>Printed by `inkwarden --status` given an address as well.</extracomment>
        <translation>--status にはアドレスを指定できません。</translation>
    </message>
    <message>
        <source>Inkwarden is already running but could not be reached.</source>
        <extracomment>Printed to the terminal when a second Inkwarden is started and the first does not answer.</extracomment>
        <translation>Inkwarden はすでに実行中ですが、応答がありません。</translation>
    </message>
</context>
</TS>
