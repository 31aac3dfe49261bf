<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- Texts of Qt itself that the host shows: the translations of Qt are not installed everywhere. Kept by hand. -->
<TS version="2.1" language="zh_CN">
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>是(&amp;Y)</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>否(&amp;N)</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>不保存</translation>
    </message>
    <message>
        <source>Don't Save</source>
        <translation>不保存</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>帮助</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>应用</translation>
    </message>
    <message>
        <source>Retry</source>
        <translation>重试</translation>
    </message>
    <message>
        <source>Ignore</source>
        <translation>忽略</translation>
    </message>
    <message>
        <source>Abort</source>
        <translation>中止</translation>
    </message>
</context>
<context>
    <name>QMessageBox</name>
    <message>
        <source>Show Details...</source>
        <translation>显示详细信息...</translation>
    </message>
    <message>
        <source>Hide Details...</source>
        <translation>隐藏详细信息...</translation>
    </message>
</context>
<context>
    <name>QFileDialog</name>
    <message>
        <source>Folder</source>
        <comment>All other platforms</comment>
        <translation>文件夹</translation>
    </message>
    <message>
        <source>%1 File</source>
        <comment>%1 is a file name suffix, for example txt</comment>
        <translation>%1 文件</translation>
    </message>
    <message>
        <source>Look in:</source>
        <translation>位置：</translation>
    </message>
    <message>
        <source>File &amp;name:</source>
        <translation>文件名(&amp;N)：</translation>
    </message>
    <message>
        <source>Files of type:</source>
        <translation>文件类型：</translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation>文件夹：</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>打开(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>保存(&amp;S)</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>后退</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>前进</translation>
    </message>
    <message>
        <source>Go back</source>
        <translation>后退</translation>
    </message>
    <message>
        <source>Go forward</source>
        <translation>前进</translation>
    </message>
    <message>
        <source>Parent Directory</source>
        <translation>上级文件夹</translation>
    </message>
    <message>
        <source>Go to the parent directory</source>
        <translation>转到上级文件夹</translation>
    </message>
    <message>
        <source>Create New Folder</source>
        <translation>新建文件夹</translation>
    </message>
    <message>
        <source>Create a New Folder</source>
        <translation>新建文件夹</translation>
    </message>
    <message>
        <source>List View</source>
        <translation>列表</translation>
    </message>
    <message>
        <source>Change to list view mode</source>
        <translation>切换到列表</translation>
    </message>
    <message>
        <source>Detail View</source>
        <translation>详细信息</translation>
    </message>
    <message>
        <source>Change to detail view mode</source>
        <translation>切换到详细信息</translation>
    </message>
    <message>
        <source>Sidebar</source>
        <translation>侧栏</translation>
    </message>
    <message>
        <source>List of places and bookmarks</source>
        <translation>位置与书签</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>删除(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>重命名(&amp;R)</translation>
    </message>
    <message>
        <source>Show &amp;hidden files</source>
        <translation>显示隐藏文件(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;New Folder</source>
        <translation>新建文件夹(&amp;N)</translation>
    </message>
    <message>
        <source>New Folder</source>
        <translation>新建文件夹</translation>
    </message>
    <message>
        <source>All Files (*)</source>
        <translation>所有文件 (*)</translation>
    </message>
    <message>
        <source>My Computer</source>
        <translation>计算机</translation>
    </message>
    <message>
        <source>Computer</source>
        <translation>计算机</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 已存在。
是否替换？</translation>
    </message>
    <message>
        <source>%1
File not found.
Please verify the correct file name was given.</source>
        <translation>%1
找不到文件。
请检查文件名是否正确。</translation>
    </message>
    <message>
        <source>%1
Directory not found.
Please verify the correct directory name was given.</source>
        <translation>%1
找不到文件夹。
请检查文件夹名是否正确。</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Are you sure you want to delete '%1'?</source>
        <translation>确定要删除 “%1” 吗？</translation>
    </message>
    <message>
        <source>Recent Places</source>
        <translation>最近的位置</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>移除</translation>
    </message>
    <message>
        <source>Show </source>
        <translation>显示 </translation>
    </message>
</context>
<context>
    <name>QFileSystemModel</name>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>大小</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>类型</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>种类</translation>
    </message>
    <message>
        <source>Date Modified</source>
        <translation>修改日期</translation>
    </message>
    <message>
        <source>Computer</source>
        <translation>计算机</translation>
    </message>
    <message>
        <source>My Computer</source>
        <translation>计算机</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Undo</source>
        <translation>撤销(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>重做(&amp;R)</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>剪切(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>复制(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>粘贴(&amp;P)</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>全选</translation>
    </message>
</context>
<context>
    <name>QWidgetTextControl</name>
    <message>
        <source>&amp;Copy</source>
        <translation>复制(&amp;C)</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>全选</translation>
    </message>
</context>
<context>
    <name>QJsonParseError</name>
    <message>
        <source>no error occurred</source>
        <translation>没有错误</translation>
    </message>
    <message>
        <source>unterminated object</source>
        <translation>对象没有结束</translation>
    </message>
    <message>
        <source>missing name separator</source>
        <translation>缺少冒号</translation>
    </message>
    <message>
        <source>unterminated array</source>
        <translation>数组没有结束</translation>
    </message>
    <message>
        <source>missing value separator</source>
        <translation>缺少逗号</translation>
    </message>
    <message>
        <source>illegal value</source>
        <translation>非法的值</translation>
    </message>
    <message>
        <source>invalid termination by number</source>
        <translation>数字后意外结束</translation>
    </message>
    <message>
        <source>illegal number</source>
        <translation>非法的数字</translation>
    </message>
    <message>
        <source>invalid escape sequence</source>
        <translation>无效的转义</translation>
    </message>
    <message>
        <source>invalid UTF8 string</source>
        <translation>无效的 UTF-8 文本</translation>
    </message>
    <message>
        <source>unterminated string</source>
        <translation>文本没有结束</translation>
    </message>
    <message>
        <source>object is missing after a comma</source>
        <translation>逗号后缺少对象</translation>
    </message>
    <message>
        <source>too deeply nested document</source>
        <translation>嵌套过深</translation>
    </message>
    <message>
        <source>too large document</source>
        <translation>文档过大</translation>
    </message>
    <message>
        <source>garbage at the end of the document</source>
        <translation>末尾有多余内容</translation>
    </message>
</context>
<context>
    <name>QColorDialog</name>
    <message>
        <source>Hu&amp;e:</source>
        <translation>色调(&amp;E)：</translation>
    </message>
    <message>
        <source>&amp;Sat:</source>
        <translation>饱和度(&amp;S)：</translation>
    </message>
    <message>
        <source>&amp;Val:</source>
        <translation>亮度(&amp;V)：</translation>
    </message>
    <message>
        <source>&amp;Red:</source>
        <translation>红(&amp;R)：</translation>
    </message>
    <message>
        <source>&amp;Green:</source>
        <translation>绿(&amp;G)：</translation>
    </message>
    <message>
        <source>Bl&amp;ue:</source>
        <translation>蓝(&amp;U)：</translation>
    </message>
    <message>
        <source>A&amp;lpha channel:</source>
        <translation>Alpha 通道(&amp;L)：</translation>
    </message>
    <message>
        <source>&amp;HTML:</source>
        <translation>&amp;HTML：</translation>
    </message>
    <message>
        <source>&amp;Basic colors</source>
        <translation>基本颜色(&amp;B)</translation>
    </message>
    <message>
        <source>&amp;Custom colors</source>
        <translation>自定义颜色(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Add to Custom Colors</source>
        <translation>添加到自定义颜色(&amp;A)</translation>
    </message>
    <message>
        <source>Select Color</source>
        <translation>选择颜色</translation>
    </message>
    <message>
        <source>&amp;Pick Screen Color</source>
        <translation>从屏幕取色(&amp;P)</translation>
    </message>
    <message>
        <source>Cursor at %1, %2
Press ESC to cancel</source>
        <translation>光标位于 %1, %2
按 Esc 取消</translation>
    </message>
</context>
</TS>
